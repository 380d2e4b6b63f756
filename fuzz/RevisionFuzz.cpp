// SPDX-License-Identifier: MIT
// Revision numbers and the texts of GUIDs.
// Covers: conversion/RevisionNumbers.cpp base/Guid.cpp
#include "Input.h"
#include "automation/Variant.h"
#include "base/Guid.h"
#include "conversion/Conversion.h"
#include "conversion/RevisionNumbers.h"

#include <cstdlib>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto keepsMessages = make<Conversion>();
    fuzz::Input input(data, size);
    String first = input.text();
    String second = input.text();
    if (const auto guid = parseGuid(first); guid && parseGuid(guidText(*guid)) != guid)
        std::abort();
    fuzz::succeeds([&] { g_IsValidRevisionNumber(first); });
    fuzz::succeeds([&] { g_CompareRevisionNumber(first, second); });
    fuzz::succeeds([&] { g_ValidateNewRevisionNumber(first, second); });
    fuzz::succeeds([&] { g_IncrementRevisionNumber(first); });
    return 0;
}
