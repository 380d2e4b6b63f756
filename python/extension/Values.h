// SPDX-License-Identifier: MIT
// The conversions of values. Those of the commonest types are done here, the others by the functions of
// vlgs/_values.py, which says the rules.
#pragma once

#include "Reference.h"

#include "capi/vlgs.h"

#include <cstddef>
#include <memory>

namespace vlgs::python {

/// Writes a Python value into an empty one, which the caller clears, also after a failure.
bool put(PyObject* value, vlgs_value& slot);
/// The Python value of a native one, whose object it may take over; a new reference, null after a failure.
PyObject* take(vlgs_value& slot);

/// Native values that are cleared at the end, few of them on the stack.
class Values {
  public:
    explicit Values(std::size_t count) : count_(count) {
        if (count > usual)
            more_ = std::make_unique<vlgs_value[]>(count);
        else
            for (std::size_t i = 0; i < count; ++i)
                few_[i] = {};
        data_ = more_ ? more_.get() : few_;
    }
    ~Values() { clear(); }
    Values(const Values&) = delete;
    Values& operator=(const Values&) = delete;

    void clear();
    std::size_t size() const { return count_; }
    vlgs_value* data() { return data_; }
    vlgs_value& operator[](std::size_t index) { return data_[index]; }

  private:
    static constexpr std::size_t usual = 12;
    std::size_t count_;
    vlgs_value* data_;
    std::unique_ptr<vlgs_value[]> more_;
    vlgs_value few_[usual];
};

} // namespace vlgs::python
