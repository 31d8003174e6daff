#include "heat_state_file.h"

namespace quenchly {

HeatStateFile::Outcome HeatStateFile::refresh()
{
    if (const std::optional<FileReading> reading = file_.readIfChanged()) {
        outcome_ = outcomeOf(*reading);
        if (outcome_ == Outcome::read)
            state_ = HeatState::parse(reading->bytes);
    }
    return outcome_;
}

HeatStateFile::Outcome HeatStateFile::outcomeOf(const FileReading& reading)
{
    switch (reading.outcome) {
        case FileReading::Outcome::missing:
            return Outcome::missing;
        case FileReading::Outcome::unreadable:
        case FileReading::Outcome::tooLarge:
            break;
        case FileReading::Outcome::read:
            return Outcome::read;
    }
    return Outcome::unreadable;
}

}  // namespace quenchly
