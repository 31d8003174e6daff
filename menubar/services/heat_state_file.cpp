#include "heat_state_file.h"

namespace quenchly {

HeatStateFile::Outcome HeatStateFile::refresh()
{
    const std::optional<FileReading> reading = file_.readIfChanged();
    if (!reading)
        return Outcome::read;
    switch (reading->outcome) {
        case FileReading::Outcome::missing:
            return Outcome::missing;
        case FileReading::Outcome::unreadable:
            return Outcome::unreadable;
        case FileReading::Outcome::tooLarge:
            state_.reset();
            break;
        case FileReading::Outcome::read:
            state_ = HeatState::parse(reading->bytes);
            break;
    }
    return Outcome::read;
}

}  // namespace quenchly
