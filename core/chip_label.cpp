#include "chip_label.h"

#include <array>
#include <utility>

#include "text.h"
#include "tool_output.h"
#ifndef __APPLE__
#include "file_reading.h"
#endif

namespace quenchly::ChipLabel {
namespace {

std::string without(std::string_view text, std::string_view part)
{
    return replacingAll(text, part, "");
}

#ifndef __APPLE__
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
#endif

}  // namespace

std::string shell(const std::string& commandLine)
{
    const auto result = runTool({"/bin/sh", "-c", commandLine});
    return result && isValidUtf8(result->standardOutput) ? std::string(trimmed(result->standardOutput)) : std::string();
}

std::string normalize(std::string_view brand)
{
    std::string text(brand);
    for (const char* decoration : {"Apple ", "(R)", "(TM)", " CPU", " Processor"})
        text = without(text, decoration);
    return std::string(trimmed(text));
}

std::string modelFamily(std::string_view fromModel)
{
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 9> families{{
        {"macmini", "Mac mini"},
        {"macbookpro", "MacBook Pro"},
        {"macbookair", "MacBook Air"},
        {"macbook", "MacBook"},
        {"imacpro", "iMac Pro"},
        {"imac", "iMac"},
        {"macpro", "Mac Pro"},
        {"macstudio", "Mac Studio"},
        {"mac", "Mac"},
    }};
    const std::string_view model = trimmed(fromModel);
    const std::string prefix = lowercased(model.substr(0, model.find_first_of("0123456789,")));
    for (const auto& [known, family] : families)
        if (prefix == known)
            return std::string(family);
    return std::string(model);
}

Facts facts()
{
#ifdef __APPLE__
    return {.brand = shell("sysctl -n machdep.cpu.brand_string"), .model = shell("sysctl -n hw.model")};
#else
    return {.brand = processorBrand(),
            .model = std::string(trimmed(fileText("/sys/devices/virtual/dmi/id/product_name")))};
#endif
}

std::string label(const Facts& facts)
{
    const std::string chip = normalize(facts.brand);
    std::string family = modelFamily(facts.model);
    if (chip.empty())
        return family;
    return family.empty() ? chip : chip + " " + family;
}

std::string machine()
{
    return label(facts());
}

}  // namespace quenchly::ChipLabel
