#include "watched_file.h"

#include <chrono>

namespace quenchly {
namespace {

/// File systems stamp files at clock ticks: a file changed again within the same tick keeps its stamp, so a stamp is
/// trusted only once it lies this far in the past.
constexpr std::chrono::seconds settling(2);

bool hasStamp(const FileReading& reading)
{
    return reading.outcome == FileReading::Outcome::read || reading.outcome == FileReading::Outcome::tooLarge;
}

}  // namespace

bool WatchedFile::isSettled(const FileStamp& stamp) const
{
    const auto changedAt = std::chrono::ceil<Instant::duration>(std::chrono::nanoseconds(stamp.changedAt));
    return now_() - Instant(changedAt) > settling;
}

std::optional<FileReading> WatchedFile::readIfChanged()
{
    if (trustedStamp_ && fileStamp(path_) == trustedStamp_)
        return std::nullopt;
    FileReading reading = readFile(path_);
    trustedStamp_ = hasStamp(reading) && isSettled(reading.stamp) ? std::optional(reading.stamp) : std::nullopt;
    return reading;
}

}  // namespace quenchly
