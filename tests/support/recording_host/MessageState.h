// Records what the user was shown, and answers questions as a test has set.
#pragma once

#include "CM/platform/CString.h"

#include <deque>
#include <functional>
#include <vector>

namespace recording {

struct MessageState {
    struct Shown {
        CString text;
        unsigned int flags = 0;
        int level = 0;
        bool question = false; ///< shown by notifyUserAndAsk or OneTimeMessageBox
        CString key;           ///< of a OneTimeMessageBox
    };

    std::deque<int> answers;      ///< button ids, first question first
    int defaultAnswer = 7;        ///< IDNO: the answer after the others are used up
    std::vector<Shown> shown;     ///< everything that the user was shown, in order
    int silenced = 0;             ///< number of SilenceMessageObject; messages are recorded nevertheless
    std::function<void()> onShow; ///< called before an answer is given, for a side effect
};

} // namespace recording
