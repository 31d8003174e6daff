#include "hardware_model_linux.h"

#include "file_reading.h"
#include "text.h"

namespace quenchly {
namespace {

constexpr std::size_t longestModel = 100;

std::string firstText(const std::filesystem::path& file)
{
    // The device tree ends its texts with NUL, which becomes a blank here.
    return std::string(trimmed(displayLine(readFile(file).bytes, longestModel)));
}

}  // namespace

std::optional<std::string> hardwareModel(const std::filesystem::path& systemFolder)
{
    for (const char* file : {"class/dmi/id/product_name", "firmware/devicetree/base/model"})
        if (std::string model = firstText(systemFolder / file); !model.empty())
            return model;
    return std::nullopt;
}

}  // namespace quenchly
