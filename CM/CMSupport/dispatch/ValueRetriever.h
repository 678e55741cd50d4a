// Sets a variable for the duration of a scope, and restores the old value at its end.
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
