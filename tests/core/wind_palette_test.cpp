#include "wind_palette.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

TEST(WindPalette, HoldsTheSixColours)
{
    const struct {
        const char* name;
        std::uint32_t colour;
        std::uint32_t red, green, blue;
    } rows[] = {
        {"blue", WindPalette::blue, 78, 147, 198},   {"teal", WindPalette::teal, 107, 143, 181},
        {"amber", WindPalette::amber, 225, 154, 60}, {"clay", WindPalette::clay, 240, 154, 116},
        {"red", WindPalette::red, 212, 72, 60},      {"muted", WindPalette::muted, 142, 138, 132},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.colour, row.red << 16 | row.green << 8 | row.blue) << row.name;
}

}  // namespace
}  // namespace quenchly
