// The user of the recording host: what was shown, and the answers that a test has put down for the questions.
#pragma once

#include "CM/platform/CString.h"

#include <deque>
#include <functional>
#include <vector>

namespace recording {

struct Messages {
    struct Shown {
        CString text;
        unsigned int flags = 0;
        int level = 0;
        bool question = false; ///< shown by notifyUserAndAsk or OneTimeMessageBox
        CString key;           ///< of a OneTimeMessageBox
    };

    std::deque<int> answers;  ///< button ids, first question first
    int defaultAnswer = 7;    ///< IDNO: the answer once the others are used up
    std::vector<Shown> shown; ///< all that the user has seen, in order
    int silenced = 0;         ///< how many SilenceMessageObject live; what is shown is written down all the same
    std::function<void()> onShow; ///< called before an answer is given, for a side effect
};

} // namespace recording
