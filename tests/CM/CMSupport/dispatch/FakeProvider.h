// Provides a provider route that records its calls. A test program with this file among its sources links it
// instead of the library's own. Without a FakeProvider object, every entry shows a box with `notice` and returns
// 0.
#pragma once

#include "CM/platform/CString.h"

#include <functional>
#include <string>
#include <vector>

class FakeProvider {
  public:
    static constexpr auto notice = "The operation went to the provider.";

    FakeProvider();
    ~FakeProvider();
    FakeProvider(const FakeProvider &) = delete;
    FakeProvider &operator=(const FakeProvider &) = delete;

    struct Call {
        std::string entry;
        std::vector<CString> texts;          ///< the texts and flags among the arguments
        std::vector<const void *> addresses; ///< of the lists and units among them
    };
    std::vector<Call> calls;
    int result = 1;               ///< what every entry returns
    std::function<void()> onCall; ///< called by every entry, after the call was recorded

    [[nodiscard]] std::vector<std::string> entries() const;
    /// Returns the current fake; throws std::logic_error if there is none.
    static FakeProvider &current();
};
