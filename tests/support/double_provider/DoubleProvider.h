// DoubleProvider: a provider library for tests, with what it records and how it answers. A test program loads the
// library like any provider; `doubleProvider`, an export of the library, gives it this object. It belongs to one
// process and starts afresh when the library is loaded again.
#pragma once

#include "CM/scc/scc.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace support {

struct DoubleProvider {
    /// What the entry with a name does after its call was recorded: its result. By default success.
    using Answer = std::function<SCCRTN()>;
    std::map<std::string, Answer> answers;
    void answer(const std::string &entry, SCCRTN result) {
        answers[entry] = [result] { return result; };
    }

    /// Each call as a line of text: the entry and its arguments, such as "SccCloseProject context=1". Contexts are
    /// numbered from 1 in the order of their creation; null is 0.
    std::vector<std::string> calls;
    /// Receives each line, too.
    std::function<void(const std::string &)> onCall;

    std::string name = "Double"; ///< written without regard to the size of the buffer
    unsigned long capabilities = 0;
    /// What SccGetProjPath writes over the proposals.
    std::string chosenProject = "Chosen";
    std::string chosenAuxPath = "chosen/aux";
    std::string chosenUser;
    int answersIsNew = 0;
    /// What SccOpenProject writes into its texts; nothing for the empty text.
    std::string openedProject;
    std::string openedAuxPath;
    /// The text output function of the last SccOpenProject.
    LPTEXTOUTPROC textOutput = nullptr;
    /// The states of SccQueryInfo by file, and that of all other files.
    std::map<std::string, long> states;
    long otherState = SCC_STATUS_CONTROLLED;
    /// The files that SccPopulateList enumerates, and its callback's results.
    std::vector<std::string> enumerated;
    std::vector<int> populateResults;
    /// The structure that SccGetCommandOptions gives, and what the second form of it answers.
    void *options = nullptr;

    std::map<const void *, int> contexts; ///< the numbers of the contexts
    std::vector<char> contextPlaces = std::vector<char>(1000);
};

} // namespace support

extern "C" support::DoubleProvider *doubleProvider();
