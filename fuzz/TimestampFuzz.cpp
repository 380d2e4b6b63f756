// SPDX-License-Identifier: MIT
// Any text as a date: what the run time reads it writes again, and reads back as the same moment.
// Covers: conversion/Timestamps.cpp
#include "automation/DateFormat.h"
#include "automation/DateText.h"
#include "base/Dates.h"
#include "base/Error.h"
#include "conversion/Conversion.h"
#include "conversion/Timestamps.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const String text = String::fromUtf8({reinterpret_cast<const char*>(data), size});
    static const auto keepsMessages =
        make<Conversion>(); // else each refusal would read the message texts anew
    try {
        Date date;
        g_CTimestamp(text, {}, date, true, false);
    } catch (const Error&) {
        // no moment
    }
    if (const auto date = parseDate(text)) {
        const auto back = parseDate(formatDate(*date, universalTimestampFormat));
        if (!back || secondsBetween(*date, *back) != 0)
            std::abort();
    }
    return 0;
}
