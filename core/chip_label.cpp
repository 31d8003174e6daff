#include "chip_label.h"

#include <array>
#include <utility>

#include "text.h"

namespace quenchly::ChipLabel {
namespace {

std::string without(std::string_view text, std::string_view part)
{
    return replacingAll(text, part, "");
}

}  // namespace

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

std::string label(const Facts& facts)
{
    const std::string chip = normalize(facts.brand);
    std::string family = modelFamily(facts.model);
    if (chip.empty())
        return family;
    return family.empty() ? chip : chip + " " + family;
}

}  // namespace quenchly::ChipLabel
