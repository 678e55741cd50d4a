// ValueRetriever: sets a variable for the length of a scope. The old value comes back at its end, on every way
// out.
#pragma once

#include <utility>

template <class VALUE> class ValueRetriever {
  public:
    /// The variable must outlive this object.
    ValueRetriever(VALUE &variable, VALUE value)
        : variable_(variable), old_(std::exchange(variable, std::move(value))) {}
    ~ValueRetriever() { variable_ = std::move(old_); }
    ValueRetriever(const ValueRetriever &) = delete;
    ValueRetriever &operator=(const ValueRetriever &) = delete;

  private:
    VALUE &variable_;
    VALUE old_;
};
