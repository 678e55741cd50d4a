// Expands a template step by step, as the language is defined: searches each variable from the start of the
// complete text and replaces it with the host's text class. The faster code of the library has to return the same.
#pragma once

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/SPString.h"

#include <stdexcept>

class PlainExpansion {
  public:
    /// Thrown by expand() where the library may come to its limits.
    class TooMuch : public std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    explicit PlainExpansion(CMArgumentList &args) : args_(args) {}

    /// As CMProperty::Expand.
    int expand(const CString &source, CString &result, bool useToolName) {
        count();
        if (source.IsEmpty()) {
            return 1;
        }
        ++depth_;
        const int ok = expandFilled(source, result, useToolName);
        --depth_;
        return ok;
    }

  private:
    void count() {
        if (depth_ > 20 || ++steps_ > 500) {
            throw TooMuch("the template grows");
        }
    }

    int expandFilled(const CString &source, CString &result, bool useToolName) {
        int ok = 1;
        CString work = source;
        int start = 0;
        int end = 0;
        CString ifPart;
        CString thenPart;
        CString elsePart;
        CString scratch;
        while (CMProperty::ExtractCondition(work, start, end, ifPart, thenPart, elsePart, scratch) != 0) {
            CString value;
            CString replacement;
            ok = expand(ifPart, value, false);
            if (ok == 1) {
                ok = expand(value.IsEmpty() ? elsePart : thenPart, replacement, false);
            }
            work = work.Left(start) + replacement + work.Mid(end + 1);
        }
        return work.IsEmpty() ? 1 : expandVariables(work, ok, result, useToolName);
    }

    int expandVariables(const CString &work, int ok, CString &result, bool useToolName) {
        const SPString theArgumentPattern(R"(\${?([a-zA-Z_][a-zA-Z0-9_]*)}?)");
        SPString subject(work);
        SPString previous;
        SPStringList matches(20);
        while (subject.m(theArgumentPattern, matches, "i") != 0 && subject != previous) {
            count();
            previous = subject;
            SPString escaped = matches.shift();
            escaped.s(R"(\$)", R"(\\$)");
            const CString name = matches.shift();
            CString value;
            CString scratch;
            if (CMArgument *argument = argumentNamed(name)) {
                const CString given = argument->substitute(name);
                if (ok != 0) {
                    ok = expand(given, value, false) != 0 ? 1 : 0;
                }
                subject.s(escaped, value, "i");
                continue;
            }
            const IProperty *property =
                CMProperty::getToolProperty(name, nullptr, IProperty::inherited, useToolName);
            const int found = property != nullptr ? expand(property->getValue(), value, useToolName) : 0;
            if (found == 1) {
                subject.s(escaped, value, "i");
            }
            ok = ok != 0 && found != 0 ? 1 : 0;
            if (found == 0 && CMProperty::ExpandPredefined(escaped, value, scratch) == 1) {
                ok = 1;
                subject.s(escaped, value, "i");
            }
        }
        result = subject;
        return subject == previous && !subject.str().empty() ? 0 : ok;
    }

    [[nodiscard]] CMArgument *argumentNamed(const CString &name) const {
        for (CMArgument *argument : args_) {
            if (argument != nullptr && argument->isNamed(name) != 0) {
                return argument;
            }
        }
        return nullptr;
    }

    CMArgumentList &args_;
    int depth_ = 0;
    int steps_ = 0;
};
