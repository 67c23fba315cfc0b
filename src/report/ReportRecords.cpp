#include "report/ReportRecords.h"

#include "base/Text.h"

#include <cmath>

namespace quillbrook {

namespace {

std::string durationText(double seconds)
{
    if (!std::isfinite(seconds)) {
        seconds = 0; // a store can hold infinities
    }
    if (seconds < 60) {
        return fixedText(seconds, 0) + "秒";
    }
    if (seconds < 3600) {
        return fixedText(seconds / 60, 1) + "分钟";
    }
    return fixedText(seconds / 3600, 2) + "小时";
}

} // namespace

std::string durationText(const SessionDetail& session)
{
    return durationText(session.durationSec);
}

std::string durationText(const IdleRecord& idle)
{
    return durationText(idle.durationSec);
}

} // namespace quillbrook
