#include "CM/CMSupport/core/Expansion.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/Conditional.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/VariableScan.h"
#include "CM/host/LogTrace.h"
#include "CM/host/SPString.h"

#include <algorithm>
#include <utility>

namespace {

// The language itself has no limits: a value that refers to itself would exhaust the stack, and values that double
// each other would exhaust the memory. An expansion beyond these limits, which no real template comes near, fails
// together with the outermost one, with the text expanded so far.
constexpr int deepest = 200;
constexpr std::size_t mostWork = std::size_t{128} << 20; // bytes, the sum of all texts expanded
constexpr std::size_t workOfOne = 1024;                  // added for each expansion

// Returns the text that replaces `variable` in a substitution. A backslash or a dollar may have a special meaning
// there, which the host's text class decides.
CString replacementFor(const CString &variable, const CString &escaped, const CString &value) {
    if (value.FindOneOf("\\$") < 0) {
        return value;
    }
    SPString text(variable);
    text.s(escaped, value, "i");
    return text;
}

} // namespace

Expansion::Budget *Expansion::outermost_ = nullptr;

Expansion::Expansion(CMArgumentList &args) : args_(args), budget_(outermost_ != nullptr ? *outermost_ : own_) {
    outermost_ = &budget_;
}

Expansion::~Expansion() {
    if (&budget_ == &own_) {
        outermost_ = nullptr;
    }
}

class Expansion::Level {
  public:
    explicit Level(int &depth) : depth_(depth) { ++depth_; }
    ~Level() { --depth_; }
    Level(const Level &) = delete;
    Level &operator=(const Level &) = delete;

  private:
    int &depth_;
};

bool Expansion::mayGoOn(const CString &source, const CString &name) {
    if (budget_.depth >= deepest) {
        giveUp(name, "it refers to itself or is nested too deeply");
    }
    return pays(source, name);
}

bool Expansion::pays(const CString &text, const CString &name) {
    budget_.work += workOfOne + static_cast<std::size_t>(text.GetLength());
    if (budget_.work > mostWork) {
        giveUp(name, "it grows without end");
    }
    return !budget_.stopped;
}

void Expansion::giveUp(const CString &name, const char *why) {
    if (!std::exchange(budget_.stopped, true)) {
        const CString line = "The expansion of '" + name + "' was given up: " + why;
        debugTrace({line, "\n"});
        LogTrace::Log log(LogTrace::Log::cm);
        log.Min("../CM/CMSupport/Property", __LINE__, line);
        budget_.fault = {name, true};
    }
}

int Expansion::expand(const CString &source, const CString &name, CString &result, bool useToolName) {
    debugTrace({"Expanding '", source, "'\n"});
    if (source.IsEmpty()) {
        debugTrace({"nothing the expand\n"});
        return 1;
    }
    if (!mayGoOn(source, name)) {
        return 0;
    }
    const Level level(budget_.depth);
    if (source.Find('(') < 0) {
        return expandVariables(source, 1, result, useToolName);
    }
    CString work = source;
    const int ok = expandConditionals(work, name);
    if (work.IsEmpty()) {
        debugTrace({"nothing the more expand\n"});
        return 1; // required: even if a conditional failed
    }
    return expandVariables(work, ok, result, useToolName);
}

// Required: returns the status of the last conditional only.
int Expansion::expandConditionals(CString &work, const CString &name) {
    int ok = 1;
    while (const auto found = findConditional(work)) {
        CString value;
        ok = expand(found->ifPart, name, value, false);
        CString replacement;
        if (ok == 1) {
            ok = expand(value.IsEmpty() ? found->elsePart : found->thenPart, name, replacement, false);
        }
        if (budget_.stopped || !pays(work, name)) {
            return 0;
        }
        const auto text = work.view();
        CString changed(text.substr(0, found->start));
        changed += replacement;
        changed += text.substr(found->end + 1);
        work = std::move(changed);
        debugTrace({"after condition expansion: '", work, "'\n"});
    }
    return ok;
}

int Expansion::expandVariables(std::string_view work, int ok, CString &result, bool useToolName) {
    VariableScan text(work);
    CString unresolved;
    bool changed = true;
    while (changed) {
        const auto found = text.find();
        if (!found) {
            break;
        }
        const CString &variable = found->text;
        const CString &name = found->name;
        const CString escaped = '\\' + variable;
        CString value;
        bool replaces = true;
        const Fault before = budget_.fault;
        bool isFixed = false;
        if (CMArgument *argument = argumentNamed(name)) {
            const CString given = argument->substitute(name);
            if (ok != 0) {
                ok = expand(given, name, value, false) != 0 ? 1 : 0;
            } // required: else the variable becomes empty
        } else {
            const int known = expandProperty(name, value, useToolName);
            ok = ok != 0 && known != 0 ? 1 : 0;
            if (known == 0) {
                // An unknown name is returned unchanged, which ends the loop below. This is the only place where a
                // failure is corrected.
                CString scratch;
                replaces = CMProperty::ExpandPredefined(escaped, value, scratch) == 1 && pays(value, name);
                ok = replaces ? 1 : ok;
                isFixed = replaces;
            }
        }
        replaces = replaces && !budget_.stopped;
        const CString replacement = replaces ? replacementFor(variable, escaped, value) : variable;
        changed = replacement != variable;
        if (changed) {
            text.replace(replacement);
            if (isFixed) {
                budget_.fault = before;
            }
        } else {
            unresolved = variable;
        }
    }
    if (!changed) {
        debugTrace({"Could not resolve '", unresolved, "'\n"});
        ok = 0;
        if (budget_.fault.name.IsEmpty()) {
            budget_.fault.name = unresolved;
        }
    }
    result = text.take();
    return ok;
}

CMArgument *Expansion::argumentNamed(const CString &name) const {
    const auto found = std::ranges::find_if(
        args_, [&](const CMArgument *argument) { return argument != nullptr && argument->isNamed(name) != 0; });
    return found != args_.end() ? *found : nullptr;
}

int Expansion::expandProperty(const CString &key, CString &result, bool useToolName) {
    debugTrace({"Expanding property '", key, "'\n"});
    const IProperty *property = CMProperty::getToolProperty(key, nullptr, IProperty::inherited, useToolName);
    if (property == nullptr) {
        return 0;
    }
    const int ok = expand(property->getValue(), key, result, useToolName);
    debugTrace({"'", key, "' expanded to '", result, "'\n"});
    return ok;
}
