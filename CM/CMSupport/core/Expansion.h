// Expands a template, including the templates that it refers to.
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

    /// Works like CMProperty::Expand. `name` is the variable or property whose value `source` is, for the log.
    int expand(const CString &source, const CString &name, CString &result, bool useToolName);
    /// Works like CMProperty::ExpandProperty.
    int expandProperty(const CString &key, CString &result, bool useToolName);

    /// The first reason why an expansion failed.
    struct Fault {
        CString name; ///< the variable that has no value; empty if there was no fault
        /// Whether `name` is instead a property whose value refers to itself or grows without limit.
        bool isEndless = false;
    };
    [[nodiscard]] const Fault &fault() const { return budget_.fault; }

  private:
    class Level;
    struct Budget {
        int depth = 0;
        std::size_t work = 0; // compared with the limit on the work
        bool stopped = false; // a limit was reached; nothing more is expanded
        Fault fault;
    };

    int expandConditionals(CString &work, const CString &name);
    int expandVariables(std::string_view work, int ok, CString &result, bool useToolName);
    [[nodiscard]] CMArgument *argumentNamed(const CString &name) const;
    /// Returns whether one more expansion may begin.
    [[nodiscard]] bool mayGoOn(const CString &source, const CString &name);
    /// Counts the work on a text. Returns whether it stays within the limit.
    [[nodiscard]] bool pays(const CString &text, const CString &name);
    void giveUp(const CString &name, const char *why);

    CMArgumentList &args_;
    Budget own_;
    Budget &budget_;           // shared with the outermost expansion, because an argument may start an inner one
    static Budget *outermost_; // null while none is under way; user-interface thread only
};
