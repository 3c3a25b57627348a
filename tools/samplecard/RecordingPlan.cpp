#include "tools/samplecard/RecordingPlan.h"

#include "common/CardFiles.h"
#include "common/Log.h"

#include <ctime>

namespace samplecard {

namespace {

// "yyyymmdd_hhmiss" of the camera's local time.
std::string localStamp(int second)
{
    const auto local =
        std::time_t(Drive::startUtcMilliseconds / 1000 + Drive::localHoursAhead * 3600 + second);
    std::tm when{};
    gmtime_r(&local, &when);
    return formatted("%04d%02d%02d_%02d%02d%02d", when.tm_year + 1900, when.tm_mon + 1, when.tm_mday,
        when.tm_hour, when.tm_min, when.tm_sec);
}

} // namespace

std::vector<Recording> planRecordings(const Drive& drive, int seconds)
{
    std::vector<Recording> plan;
    const int first = std::max(0, int(drive.tunnelEntry()) - seconds * 13 / 10);
    for (int n = 0; n < 3; ++n) {
        const int start = first + n * seconds;
        // Only names of continuous recordings have room for the camera's letter.
        const std::string name = "alwa_" + localStamp(start);
        plan.push_back({cardFiles::alwaysFolder, name + "_F.avi", Camera::front, start, seconds});
        plan.push_back({cardFiles::alwaysFolder, name + "_R.avi", Camera::rear, start, seconds});
    }
    const int event = int(Drive::impact) - seconds * 6 / 10;
    plan.push_back(
        {cardFiles::eventFolder, "event_" + localStamp(event) + ".avi", Camera::front, event, seconds});
    const int motion = int(Drive::parked);
    plan.push_back(
        {cardFiles::motionFolder, "motion_" + localStamp(motion) + ".avi", Camera::front, motion, seconds});
    return plan;
}

} // namespace samplecard
