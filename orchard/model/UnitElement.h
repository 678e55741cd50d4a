// What the reference host keeps of a unit besides what every element has: its file, its load state and its state
// under configuration management.
#pragma once

#include "CM/host/IUnit.h"
#include "orchard/model/Element.h"
#include "orchard/model/FileState.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace orchard {

class UnitElement : public Element {
  public:
    explicit UnitElement(Kind kind);
    ~UnitElement() override;

    using Element::asUnit;
    [[nodiscard]] UnitElement *asUnit() override { return this; }
    [[nodiscard]] IUnit &unit() { return static_cast<IUnit &>(object()); }

    /// Whether the unit stands in a file of its own that is read into the model. A class may stand in the file of
    /// its owner instead; an embedded file has a file, but is not read.
    [[nodiscard]] bool isSaveUnit() const { return isFileKind(kind()) && !fileName_.empty(); }
    [[nodiscard]] bool hasFile() const { return !fileName_.empty(); }

    // Names of the file. Directories are full paths without a closing separator.
    [[nodiscard]] const std::string &fileName() const { return fileName_; }
    /// The unit's directory setting, relative to its owner's directory.
    [[nodiscard]] const std::string &directorySetting() const { return directory_; }
    /// The directory of the unit's file, which is also where the files of the units in it are looked for.
    [[nodiscard]] std::string ownDirectory() const;
    [[nodiscard]] std::string fullFileName() const;
    /// The extension with its dot, as text that lives as long as the file name.
    [[nodiscard]] const char *fileExtension() const;
    [[nodiscard]] const std::string &oldFileName() const;
    /// For a unit kept elsewhere: its path as its owner's file gives it. Else empty.
    [[nodiscard]] const std::string &elsewhere() const;

    // Building, as for elements. The file name, directory and the like of a unit that stands in a model are
    // changed through the model, which keeps the indexes.
    void setFileName(std::string_view name) { fileName_ = name; }
    void setDirectorySetting(std::string_view directory) { directory_ = directory; }
    void setOldFileName(std::string_view name);
    void setElsewhere(std::string_view path);

    enum Flag : std::uint8_t {
        stub = 1,         ///< known but not loaded
        stubByChoice = 2, ///< and not to be loaded when the project is opened
        reference = 4,    ///< belongs to another project
        external = 8,     ///< kept outside the project's directory
        hiddenFromCM = 16,
        readOnlyFile = 32, ///< the file's permission bits bar writing
    };
    [[nodiscard]] bool is(Flag flag) const { return (flags_ & flag) != 0; }
    void set(Flag flag, bool on) {
        flags_ = static_cast<std::uint8_t>(on ? flags_ | flag : flags_ & ~static_cast<unsigned>(flag));
    }
    /// Whether the flag is set on the unit or on an owner.
    [[nodiscard]] bool isRecursive(Flag flag) const;
    [[nodiscard]] bool isReadOnly() const { return is(readOnlyFile) || isRecursive(reference); }

    [[nodiscard]] const std::string &header() const { return header_; }
    void setHeader(std::string_view header) { header_ = header; }
    /// Reads the header anew from the file that holds the unit. One that can't be read leaves the header as it is,
    /// which the user is told once, unless `quietly`.
    bool updateHeader(bool quietly = false);
    /// Takes the read-only state over from the permission bits of the file that holds the unit; a missing file
    /// leaves it.
    void updateMode();
    /// Of what the file held behind its header when it was last read or saved; 0 if that is not known.
    [[nodiscard]] std::uint64_t bodyHash() const { return bodyHash_; }
    void setBodyHash(std::uint64_t hash) { bodyHash_ = hash; }
    /// Of the unit's file, from before what the model holds of it was read; not known of a stub.
    [[nodiscard]] const FileState &fileState() const { return fileState_; }
    void setFileState(const FileState &state) { fileState_ = state; }
    [[nodiscard]] long cmState() const { return cmState_; }
    void setCMState(long state) { cmState_ = state; }

    struct Archive {
        bool hasScc = false;
        std::string sccProject;
        std::string sccAuxPath;
        std::string batch;
    };
    /// The unit's own archive settings, or null.
    [[nodiscard]] const Archive *archive() const;
    [[nodiscard]] Archive &makeArchive();
    /// Upward through the owners: 1 if one is set, which is assigned.
    int sccArchiveRecursive(CString &project, CString &auxPath) const;
    int batchArchiveRecursive(CString &archive) const;

    /// Takes over the state that a reload must not lose, from the object that stood here before.
    void takeStateOf(const UnitElement &old);

    // Changes of a unit in a model.
    /// Renames the file, too. A hostile name, one that is taken and any for the project unit are refused; the user
    /// is told why.
    void rename(std::string_view name);
    [[nodiscard]] bool mayBear(std::string_view name) const;
    /// Whether the files of the units directly in this one can't be renamed (empty: to any name; else to this
    /// one).
    [[nodiscard]] bool keepsFileNameOfPart(std::string_view name) const;
    /// Sets the directory, which is made when something is saved in it. One that leads out of the owner's
    /// directory, or to another unit's file, is refused; the user is told why.
    void moveTo(std::string_view directory);
    /// 1 on success; on failure the user is told why, and the old file stays.
    int save(std::string_view path, bool always);
    int saveToOwnFile(bool always);
    /// The unit's file holds now what the model holds: clears the modified flags of what stands in it.
    void noteSaved();

    // Places in the index of files (FileIndex).
    UnitElement *nextOfName = nullptr;
    UnitElement *previousOfName = nullptr;
    std::uint64_t pathHash = 0;

  private:
    struct Extras;
    [[nodiscard]] std::string withExtension(std::string_view name) const;
    [[nodiscard]] std::string faultOfNewName(const std::string &file) const;

    std::string fileName_;
    std::string directory_;
    std::string header_;
    long cmState_ = 0;
    std::uint64_t bodyHash_ = 0;
    FileState fileState_;
    std::uint8_t flags_ = 0;
    std::unique_ptr<Extras> extras_;
};

} // namespace orchard
