// Describes what happened to one item of an operation, as a value, and declares the observer that receives it.
#pragma once

#include "CM/CMSupport/core/CMTranscationType.h"
#include "CM/host/RunThread.h"
#include "CM/platform/CString.h"

#include <vector>

class CMArchiveItem;
class IUnit;

/// Describes one run of a command of the tool, or one call of a provider.
struct CMToolRun {
    enum class Match { none, warning, error };

    CString command = {};      ///< the command line, or the name of the provider's entry
    RunEnd end = {};           ///< the end of the child process; unknown for a provider's call
    int result = 0;            ///< the result of the provider's call, negative on failure; 0 for a command
    CString output = {};       ///< the tool's standard output, unless the command redirects it to a file
    CString errors = {};       ///< the tool's standard error
    Match match = Match::none; ///< which pattern matched the text of this run, as the user was told
};

/// Describes what happened to one item.
struct CMOutcome {
    enum class Kind {
        done,        ///< its command ran, or its call was made, and nothing in this report is a failure
        nothingToDo, ///< it already was in the requested state
        leftOut,     ///< it is a stub or a reference, on which the operation may not work
        gone,        ///< the reload of an earlier unit replaced it, or removed it from the model, before its turn
        declined,    ///< the user was asked and did not agree
        refused,     ///< it may not be given to a tool, for example because no command can quote its name
        noTool,      ///< no CM tool is available for it
        noCommand,   ///< the tool has no template for it, or an empty one
        notExpanded, ///< the template could not be expanded
        failed,      ///< a run failed, or its text matches the tool's error pattern
        notLoaded,   ///< the tool did its work, but the file could not be read into the model
        modelSaved,  ///< about the whole call: the host's save callback has returned
    };
    /// How the model was updated from the file.
    enum class Reload {
        none,
        header, ///< only the header and the read-only state, since the model has the content already
        content ///< the file was read, possibly into another object
    };

    CMTranscationType operation = CMTxnTool;
    /// The entry of the caller's list. Both are null if the outcome is that of a directory or of the call. If
    /// `unit` is not `unitNow`, only its address may be used: a reload may have deleted it.
    IUnit *unit = nullptr;
    CMArchiveItem *item = nullptr;
    /// The unit that exists now; null if there is none, if that is unknown, or for an item that was not loaded
    /// into the model.
    IUnit *unitNow = nullptr;
    CString file; ///< full name of the item's file, or the directory; empty for a deleted unit

    Kind kind = Kind::done;
    CString reason;              ///< why the item was not done, in words for the user; empty if it was
    CString property;            ///< key of the command's template; empty if none was used
    std::vector<CMToolRun> runs; ///< in order
    Reload reload = Reload::none;

    // The item's file at the end of the operation, at the path that it has by then.
    bool fileExists = false;
    bool fileWritable = false; ///< according to its permission bits
    bool fileChanged = false;  ///< its content differs from that before the run, or it appeared or disappeared
};

/// Receives the outcomes one by one, on the thread of the operation, and can end an operation between two items.
class CMOutcomeObserver {
  public:
    /// Called before anything is done for an item, or for a directory. Of `next`, only `unit`, `item` and `file`
    /// are set. If it returns false, the operation does nothing for the item, does not report it, and asks about
    /// the next one. The default lets each item begin.
    virtual bool mayBegin(const CMOutcome & /*next*/) { return true; }
    /// Called at the end of each item, in the order of the work. An item during which the host throws is not
    /// reported.
    virtual void report(const CMOutcome &outcome) = 0;

  protected:
    CMOutcomeObserver() = default;
    CMOutcomeObserver(const CMOutcomeObserver &) = default;
    CMOutcomeObserver &operator=(const CMOutcomeObserver &) = default;
    ~CMOutcomeObserver() = default;
};
