// Expansion: one expansion of a template, with all that it takes in turn.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/platform/CString.h"

#include <cstddef>
#include <string_view>

class Expansion {
  public:
    explicit Expansion(CMArgumentList &args);
    ~Expansion();
    Expansion(const Expansion &) = delete;
    Expansion &operator=(const Expansion &) = delete;

    /// As CMProperty::Expand. `name` is what the source is the value of, for the log.
    int expand(const CString &source, const CString &name, CString &result, bool useToolName);
    /// As CMProperty::ExpandProperty.
    int expandProperty(const CString &key, CString &result, bool useToolName);

  private:
    class Level;
    struct Budget {
        int depth = 0;
        std::size_t work = 0; // what the limit on the work is compared with
        bool stopped = false; // whether a limit was reached, after which nothing more is expanded
    };

    int expandConditionals(CString &work, const CString &name);
    int expandVariables(std::string_view work, int ok, CString &result, bool useToolName);
    [[nodiscard]] CMArgument *argumentNamed(const CString &name) const;
    /// Whether one more expansion may begin.
    [[nodiscard]] bool mayGoOn(const CString &source, const CString &name);
    /// Counts the work on a text; whether the limit leaves room for it.
    [[nodiscard]] bool pays(const CString &text, const CString &name);
    void giveUp(const CString &name, const char *why);

    CMArgumentList &args_;
    Budget own_;
    Budget &budget_; // that of the outermost expansion, which an argument's value may have come to this one from
    static Budget *outermost_; // null while none is under way; user-interface thread only
};
