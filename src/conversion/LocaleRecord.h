// SPDX-License-Identifier: MIT
// The record of nine locale settings.
#pragma once

#include "automation/ClassDescription.h"

namespace vlgs {

/// Nine texts of the user's locale, filled afresh on every request.
struct udtLocaleSettings {
    String sDecimal;
    String sThousands;
    String sNegative;
    String sPositive; // often empty
    String sListSep;
    String sLongDate; // a pattern of the date formatter
    String sTime;
    String sDate;
    String sShortDate; // a pattern of the date formatter

    static constexpr auto record() {
        using S = udtLocaleSettings;
        return RecordTable<S, 9>{"udtLocaleSettings",
                                 guid("B8A54C0E-6D5B-4A27-9A63-5E0C53E1E7D2"),
                                 "How the user's locale writes numbers, dates and times",
                                 {{{"sDecimal", &S::sDecimal},
                                   {"sThousands", &S::sThousands},
                                   {"sNegative", &S::sNegative},
                                   {"sPositive", &S::sPositive},
                                   {"sListSep", &S::sListSep},
                                   {"sLongDate", &S::sLongDate},
                                   {"sTime", &S::sTime},
                                   {"sDate", &S::sDate},
                                   {"sShortDate", &S::sShortDate}}}};
    }
};

} // namespace vlgs
