// Holds the data of a unit in addition to that of any element: its file, its load state and its state under
// configuration management.
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

    /// Whether the unit has a file of its own that is read into the model. A class may be in its owner's file
    /// instead; an embedded file has a file that is not read.
    [[nodiscard]] bool isSaveUnit() const { return isFileKind(kind()) && !fileName_.empty(); }
    [[nodiscard]] bool hasFile() const { return !fileName_.empty(); }

    // Names of the file. Directories are full paths without a trailing separator.
    [[nodiscard]] const std::string &fileName() const { return fileName_; }
    /// The unit's directory setting, relative to its owner's directory.
    [[nodiscard]] const std::string &directorySetting() const { return directory_; }
    /// The directory of the unit's file, in which the files of the units in it are expected, too.
    [[nodiscard]] std::string ownDirectory() const;
    [[nodiscard]] std::string fullFileName() const;
    /// The extension with its dot; the text is valid as long as the file name.
    [[nodiscard]] const char *fileExtension() const;
    [[nodiscard]] const std::string &oldFileName() const;
    /// For a unit whose file is outside its owner's directory, the path as written in the owner's file; otherwise
    /// empty.
    [[nodiscard]] const std::string &elsewhere() const;

    // Building, as for elements. To change the file name, directory and the like of a unit that is in a model, use
    // the model, which updates its indexes.
    void setFileName(std::string_view name) { fileName_ = name; }
    void setDirectorySetting(std::string_view directory) { directory_ = directory; }
    void setOldFileName(std::string_view name);
    void setElsewhere(std::string_view path);

    enum Flag : std::uint8_t {
        stub = 1,         ///< known but not loaded
        stubByChoice = 2, ///< not to be loaded when the project is opened
        reference = 4,    ///< belongs to another project
        external = 8,     ///< kept outside the project's directory
        hiddenFromCM = 16,
        readOnlyFile = 32, ///< the file's permission bits forbid writing
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
    /// Reads the header again from the file that contains the unit. If it can't be read, the header stays as it
    /// is, and the user is notified once, unless `quietly`.
    bool updateHeader(bool quietly = false);
    /// Takes the read-only state from the permission bits of the file that contains the unit; does nothing if the
    /// file is missing.
    void updateMode();
    /// The hash of the text after the header when the file was last read or saved; 0 if unknown.
    [[nodiscard]] std::uint64_t bodyHash() const { return bodyHash_; }
    void setBodyHash(std::uint64_t hash) { bodyHash_ = hash; }
    /// The state of the unit's file just before its contents were read; unknown for a stub.
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
    /// Search the unit and its owners; if one has an archive, assign it and return 1; otherwise return 0.
    int sccArchiveRecursive(CString &project, CString &auxPath) const;
    int batchArchiveRecursive(CString &archive) const;

    /// Takes over the state that a reload must not lose, from the object that this one replaces.
    void takeStateOf(const UnitElement &old);

    // Changes to a unit in a model.
    /// Also renames the file. Refuses an invalid name, a name already in use, and any name for the project unit;
    /// the user is notified of the reason.
    void rename(std::string_view name);
    [[nodiscard]] bool mayHaveName(std::string_view name) const;
    /// Whether the files of the units directly in this one can't be renamed to `name`, or, if `name` is empty, to
    /// any name.
    [[nodiscard]] bool keepsFileNameOfPart(std::string_view name) const;
    /// Sets the directory, which is created when something is saved in it. Refuses a directory outside the owner's
    /// directory, or one in which the file would have the path of another unit's file; the user is notified of the
    /// reason.
    void moveTo(std::string_view directory);
    /// Returns 1 on success; on failure, notifies the user of the reason and keeps the old file.
    int save(std::string_view path, bool always);
    int saveToOwnFile(bool always);
    /// Clears the modified flags of everything in the unit's file. Call this when the file matches the model.
    void noteSaved();

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
