#include "tests/support/double_provider/DoubleProvider.h"

#include <cstring>
#include <sstream>

namespace {

support::DoubleProvider &self() {
    static support::DoubleProvider provider;
    return provider;
}

/// Collects the line of one call.
class Line {
  public:
    explicit Line(const char *entry) : entry_(entry) { line_ << entry_; }

    Line &context(const void *context) {
        const auto found = self().contexts.find(context);
        return with("context", found == self().contexts.end() ? 0 : found->second);
    }
    template <class VALUE> Line &with(const char *what, const VALUE &value) {
        line_ << ' ' << what << '=' << value;
        return *this;
    }
    Line &text(const char *what, const char *value) { return with(what, value == nullptr ? "null" : value); }
    Line &pointer(const char *what, const void *value) { return with(what, value == nullptr ? "null" : "given"); }
    Line &files(long count, char *const *files) {
        line_ << " files=";
        for (long index = 0; index < count; ++index) {
            line_ << (index == 0 ? "" : ",") << files[index];
        }
        return *this;
    }
    /// Records the call and gives its answer.
    SCCRTN done() {
        self().calls.push_back(line_.str());
        std::ostringstream().swap(line_); // a crash abandons this object, which must own no memory then
        if (self().onCall) {
            self().onCall(self().calls.back());
        }
        const auto answer = self().answers.find(entry_);
        return answer == self().answers.end() ? SCC_OK : answer->second();
    }

  private:
    const char *entry_;
    std::ostringstream line_;
};

void fill(char *buffer, const std::string &text) {
    if (buffer != nullptr && !text.empty()) {
        std::memcpy(buffer, text.c_str(), text.size() + 1);
    }
}

SCCRTN onFiles(const char *entry, void *context, HWND window, long count, char **files, char *comment, long flags,
               void *options) {
    return Line(entry)
        .context(context)
        .pointer("window", window)
        .files(count, files)
        .text("comment", comment)
        .with("flags", flags)
        .pointer("options", options)
        .done();
}

SCCRTN onFiles(const char *entry, void *context, HWND window, long count, char **files, long flags,
               void *options) {
    return Line(entry)
        .context(context)
        .pointer("window", window)
        .files(count, files)
        .with("flags", flags)
        .pointer("options", options)
        .done();
}

} // namespace

extern "C" {

SCC_EXPORT support::DoubleProvider *doubleProvider() { return &self(); }

SCCRTN SccInitialize(void **context, HWND window, char *callerName, char *sccName, long *capabilities,
                     char *auxPathLabel, unsigned long *checkoutCommentLength, unsigned long *commentLength) {
    support::DoubleProvider &provider = self();
    const int number = static_cast<int>(provider.contexts.size()) + 1;
    void *const made = &provider.contextPlaces.at(static_cast<std::size_t>(number));
    Line line("SccInitialize");
    line.pointer("context", *context)
        .pointer("window", window)
        .text("caller", callerName)
        .with("name", sccName)
        .with("label", auxPathLabel)
        .with("capabilities", *capabilities)
        .with("lengths", *checkoutCommentLength + *commentLength);
    provider.contexts[made] = number;
    *context = made;
    fill(sccName, provider.name);
    *capabilities = static_cast<long>(provider.capabilities);
    return line.done();
}

SCCRTN SccUninitialize(void *context) { return Line("SccUninitialize").context(context).done(); }

SCCRTN SccGetProjPath(void *context, HWND window, char *user, char *projectName, char *localPath,
                      char *auxProjectPath, int allowChangePath, int *isNew) {
    Line line("SccGetProjPath");
    line.context(context)
        .pointer("window", window)
        .text("user", user)
        .text("project", projectName)
        .text("local", localPath)
        .text("aux", auxProjectPath)
        .with("change", allowChangePath)
        .with("new", *isNew);
    projectName[0] = auxProjectPath[0] = '\0';
    fill(projectName, self().chosenProject);
    fill(auxProjectPath, self().chosenAuxPath);
    fill(user, self().chosenUser);
    *isNew = self().answersIsNew;
    return line.done();
}

SCCRTN SccOpenProject(void *context, HWND window, char *user, char *projectName, char *localPath,
                      char *auxProjectPath, char *comment, LPTEXTOUTPROC textOutput, long flags) {
    Line line("SccOpenProject");
    line.context(context)
        .pointer("window", window)
        .text("user", user)
        .text("project", projectName)
        .text("local", localPath)
        .text("aux", auxProjectPath)
        .text("comment", comment)
        .with("textOutput", textOutput == nullptr ? "null" : "given")
        .with("flags", flags);
    self().textOutput = textOutput;
    fill(projectName, self().openedProject);
    fill(auxProjectPath, self().openedAuxPath);
    return line.done();
}

SCCRTN SccCloseProject(void *context) { return Line("SccCloseProject").context(context).done(); }

SCCRTN SccSetOption(void *context, long option, long value) {
    return Line("SccSetOption").context(context).with("option", option).with("value", value).done();
}

SCCRTN SccGetCommandOptions(void *context, HWND window, SCCCOMMAND command, void **options) {
    Line line("SccGetCommandOptions");
    line.context(context)
        .pointer("window", window)
        .with("command", static_cast<int>(command))
        .pointer("options", options);
    if (options != nullptr) {
        *options = self().options;
    }
    return line.done();
}

SCCRTN SccGet(void *context, HWND window, long count, char **files, long flags, void *options) {
    return onFiles("SccGet", context, window, count, files, flags, options);
}
SCCRTN SccCheckout(void *context, HWND window, long count, char **files, char *comment, long flags,
                   void *options) {
    return onFiles("SccCheckout", context, window, count, files, comment, flags, options);
}
SCCRTN SccCheckin(void *context, HWND window, long count, char **files, char *comment, long flags, void *options) {
    return onFiles("SccCheckin", context, window, count, files, comment, flags, options);
}
SCCRTN SccUncheckout(void *context, HWND window, long count, char **files, long flags, void *options) {
    return onFiles("SccUncheckout", context, window, count, files, flags, options);
}
SCCRTN SccRemove(void *context, HWND window, long count, char **files, char *comment, long flags, void *options) {
    return onFiles("SccRemove", context, window, count, files, comment, flags, options);
}
SCCRTN SccHistory(void *context, HWND window, long count, char **files, long flags, void *options) {
    return onFiles("SccHistory", context, window, count, files, flags, options);
}

SCCRTN SccAdd(void *context, HWND window, long count, char **files, char *comment, long *flags, void *options) {
    std::string words;
    for (long index = 0; index < count; ++index) {
        words += (index == 0 ? "" : ",") + std::to_string(flags[index]);
    }
    return Line("SccAdd")
        .context(context)
        .pointer("window", window)
        .files(count, files)
        .text("comment", comment)
        .with("flags", words)
        .pointer("options", options)
        .done();
}

SCCRTN SccRename(void *context, HWND window, char *oldFile, char *newFile) {
    return Line("SccRename")
        .context(context)
        .pointer("window", window)
        .text("from", oldFile)
        .text("to", newFile)
        .done();
}

SCCRTN SccProperties(void *context, HWND window, char *file) {
    return Line("SccProperties").context(context).pointer("window", window).text("file", file).done();
}

SCCRTN SccQueryInfo(void *context, long count, char **files, long *status) {
    Line line("SccQueryInfo");
    line.context(context).files(count, files);
    for (long index = 0; index < count; ++index) {
        const auto found = self().states.find(files[index]);
        status[index] = found == self().states.end() ? self().otherState : found->second;
    }
    return line.done();
}

SCCRTN SccPopulateList(void *context, SCCCOMMAND command, long count, char **files, POPLISTFUNC callback,
                       void *data, long *status, long flags) {
    Line line("SccPopulateList");
    line.context(context)
        .with("command", static_cast<int>(command))
        .files(count, files)
        .pointer("data", data)
        .with("flags", flags);
    for (long index = 0; index < count; ++index) {
        status[index] = SCC_STATUS_NOTCONTROLLED;
    }
    for (const std::string &name : self().enumerated) {
        self().populateResults.push_back(callback(data, 1, SCC_STATUS_CONTROLLED, name.c_str()));
    }
    return line.done();
}

long SccCheckinTask(void *context, char *comment) {
    return Line("SccCheckinTask").context(context).text("comment", comment).done();
}
long SccSetTask(void *context, char *task) {
    return Line("SccSetTask").context(context).text("task", task).done();
}
long SccGetDefaultTask(void *context, char *task) {
    return Line("SccGetDefaultTask").context(context).text("task", task).done();
}
long SccCreateTask(void *context, void *reserved) {
    return Line("SccCreateTask").context(context).pointer("reserved", reserved).done();
}
long SccShowTask(void *context, char *task) {
    return Line("SccShowTask").context(context).text("task", task).done();
}
long SccListTasks(void *context, char *file) {
    return Line("SccListTasks").context(context).text("file", file).done();
}
}
