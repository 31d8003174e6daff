#include "heat_state_file.h"

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

}  // namespace

HeatStateFile::Outcome HeatStateFile::refresh()
{
    if (trustedStamp_ && fileStamp(path_) == trustedStamp_)
        return Outcome::read;
    trustedStamp_.reset();

    const FileReading reading = readFile(path_);
    switch (reading.outcome) {
        case FileReading::Outcome::missing:
            return Outcome::missing;
        case FileReading::Outcome::unreadable:
            return Outcome::unreadable;
        case FileReading::Outcome::tooLarge:
            state_.reset();
            break;
        case FileReading::Outcome::read:
            state_ = HeatState::parse(reading.bytes);
            break;
    }
    if (isSettled(reading.stamp))
        trustedStamp_ = reading.stamp;
    return Outcome::read;
}

}  // namespace quenchly
