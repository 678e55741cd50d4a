// Expands the predefined variables, which need neither an argument nor a property.
#include "CM/CMSupport/core/CMProperty.h"

#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/SPString.h"
#include "CM/host/Utilities.h"
#include "CM/platform/Files.h"

#include <algorithm>
#include <string>

namespace {

class Predefined {
  public:
    /// `variable` includes its dollar.
    explicit Predefined(const std::string &variable)
        : variable_(variable), escaped_("[\\]\\" + variable), plain_("\\" + variable) {}

    /// Returns whether either pattern can match. Cheaper than a match, and rarely true.
    [[nodiscard]] bool occursIn(const std::string &text) const {
        return std::search(text.begin(), text.end(), variable_.begin(), variable_.end(), NoCaseCharacter()) !=
               text.end();
    }
    /// Replaces the first escaped form, then the first plain one. Required: also within a longer name such as
    /// "$tempest". Test: Expand.TakesAPredefinedVariableThatANameBeginsWith.
    void replaceIn(SPString &text, const CString &value) const {
        text.s(escaped_, value, "i");
        text.s(plain_, value, "i");
    }

  private:
    struct NoCaseCharacter {
        static char lower(char character) {
            return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
        }
        bool operator()(char left, char right) const { return lower(left) == lower(right); }
    };

    std::string variable_;
    SPString escaped_;
    SPString plain_;
};

// Returns the name of the project's directory for units.
CString unitDirectoryName(const IProject &project) {
    CString extension = IProject::staticGetFolderExtension();
    extension.SetAt(0, '_');
    return project.getName() + extension;
}

} // namespace

int CMProperty::ExpandPredefined(const CString &source, CString &result, CString &error) {
    static const Predefined rootVariable("$OQROOT");
    static const Predefined projectName("$projectname");
    static const Predefined currentDirectory("$currentdirectory");
    static const Predefined projectDirectory("$orpdirectory");
    static const Predefined unitDirectory("$projectunitdirname");
    static const Predefined tempDirectory("$temp");

    debugTrace({"Expanding (predefined?) '", source, "'\n"});
    SPString text(source);
    CString root;
    const int hasRoot = oqGetRoot(root, error);
    // The order counts: the value of one variable may contain the next.
    if (hasRoot == 1 && rootVariable.occursIn(text.str())) {
        rootVariable.replaceIn(text, root);
    }
    const IProject *project = CurrentWorkspace::GetActiveProject();
    if (project != nullptr && projectName.occursIn(text.str())) {
        projectName.replaceIn(text, project->getFileName());
    }
    if (project != nullptr && CurrentProject::Project() != nullptr) {
        if (currentDirectory.occursIn(text.str())) {
            const CString directory = platform::currentDirectory();
            if (!directory.IsEmpty()) {
                currentDirectory.replaceIn(text, directory);
            }
        }
        if (projectDirectory.occursIn(text.str())) {
            projectDirectory.replaceIn(text, project->getProjectFileDirectory());
        }
        if (unitDirectory.occursIn(text.str())) {
            unitDirectory.replaceIn(text, unitDirectoryName(*project));
        }
    }
    if (tempDirectory.occursIn(text.str())) {
        tempDirectory.replaceIn(text, oqGetTempDir());
    }
    result = text;
    return hasRoot;
}
