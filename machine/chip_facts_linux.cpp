#include <string_view>

#include "chip_facts.h"
#include "file_reading.h"
#include "text.h"

namespace quenchly::ChipLabel {
namespace {

std::string fileText(const char* path)
{
    return readFile(path).bytes;
}

/// The value of the first "model name : ..." line.
std::string processorBrand()
{
    const std::string text = fileText("/proc/cpuinfo");
    const auto key = text.find("model name");
    const auto colon = text.find(':', key == std::string::npos ? text.size() : key);
    if (colon == std::string::npos)
        return {};
    return std::string(trimmed(std::string_view(text).substr(colon + 1, text.find('\n', colon) - colon - 1)));
}

}  // namespace

Facts facts()
{
    return {.brand = processorBrand(),
            .model = std::string(trimmed(fileText("/sys/devices/virtual/dmi/id/product_name")))};
}

}  // namespace quenchly::ChipLabel
