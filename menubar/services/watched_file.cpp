#include "watched_file.h"

#include <chrono>

namespace quenchly {
namespace {

/// File systems stamp files at clock ticks: a file changed again within the same tick keeps its stamp, so a stamp is
/// trusted only once it lies well in the past.
constexpr std::int64_t settlingNanoseconds = 2'000'000'000;

bool isSettled(const FileStamp& stamp)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::nanoseconds(now).count() - stamp.changedAt > settlingNanoseconds;
}

bool hasStamp(const FileReading& reading)
{
    return reading.outcome == FileReading::Outcome::read || reading.outcome == FileReading::Outcome::tooLarge;
}

}  // namespace

std::optional<FileReading> WatchedFile::readIfChanged()
{
    if (trustedStamp_ && fileStamp(path_) == trustedStamp_)
        return std::nullopt;
    FileReading reading = readFile(path_);
    trustedStamp_ = hasStamp(reading) && isSettled(reading.stamp) ? std::optional(reading.stamp) : std::nullopt;
    return reading;
}

}  // namespace quenchly
