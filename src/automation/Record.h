// SPDX-License-Identifier: MIT
// User-defined records as late-bound callers see them: named fields in a fixed order, held by reference and
// copied as a whole.
#pragma once

#include "automation/Variant.h"
#include "base/Guid.h"

#include <span>
#include <string_view>
#include <vector>

namespace vlgs {

/// Describes a record type: its name, its identifier and its fields, all of them texts.
struct RecordInfo {
    std::string_view name;
    GuidValue id;
    std::string_view help;
    std::span<const std::string_view> fields;
};

class VLGS_API Record : public Object {
  public:
    Record(const RecordInfo& info, std::vector<Variant> fields) : info_(info), fields_(std::move(fields)) {}
    const RecordInfo& info() const noexcept { return info_; }
    std::span<const Variant> fields() const noexcept { return fields_; }

  private:
    const RecordInfo& info_;
    std::vector<Variant> fields_;
};

} // namespace vlgs
