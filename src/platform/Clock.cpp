#include "platform/Clock.h"

#include <chrono>

namespace vlgs {

double toDayCount(const LocalTime& moment) noexcept {
    using namespace std::chrono;
    const auto date = sys_days(year(moment.year) / moment.month / moment.day);
    const auto days = static_cast<double>((date - sys_days(1899y / December / 30)).count());
    const double time = (moment.hour * 3600 + moment.minute * 60 + moment.second) / 86400.0;
    return days < 0 ? days - time : days + time;
}

} // namespace vlgs
