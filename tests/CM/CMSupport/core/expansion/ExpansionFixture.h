// Sets up the tests of the expansion language: an argument list that can be filled by name and value.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <memory>
#include <vector>

/// An argument of any name and value that counts how often its value was read.
class AnyArgument : public CMUserBasedArgument {
  public:
    AnyArgument(CString name, CString value) : name_(std::move(name)), value_(std::move(value)) {}
    [[nodiscard]] int isNamed(const CString &name) const override {
        return name.CompareNoCase(name_) == 0 ? 1 : 0;
    }
    [[nodiscard]] CString substitute(const CString &name) override {
        ++taken;
        return isNamed(name) != 0 ? value_ : name;
    }
    void setValue(const CString &value) { value_ = value; }
    int taken = 0;

  private:
    CString name_;
    CString value_;
};

class ExpansionFixture : public CoreFixture {
  protected:
    AnyArgument &give(const CString &name, const CString &value) {
        given_.push_back(std::make_unique<AnyArgument>(name, value));
        args.AddTail(given_.back().get());
        return *given_.back();
    }
    /// Expands into `result` and returns it; `status` is what Expand returned.
    std::string expand(const CString &source, bool useToolName = false) {
        status = CMProperty::Expand(source, args, result, error, useToolName);
        return result.str();
    }

    CMArgumentList args;
    CString result = "untouched";
    CString error = "no error";
    int status = -1;

  private:
    std::vector<std::unique_ptr<AnyArgument>> given_;
};
