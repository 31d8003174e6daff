#include "wind_palette.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

TEST(WindPalette, HoldsTheSixColours)
{
    const struct {
        std::uint32_t colour;
        std::uint32_t red;
        std::uint32_t green;
        std::uint32_t blue;
    } rows[] = {
        {WindPalette::blue, 78, 147, 198},  {WindPalette::teal, 107, 143, 181}, {WindPalette::amber, 225, 154, 60},
        {WindPalette::clay, 240, 154, 116}, {WindPalette::red, 212, 72, 60},    {WindPalette::muted, 142, 138, 132},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.colour, row.red << 16 | row.green << 8 | row.blue) << std::hex << row.colour;
}

}  // namespace
}  // namespace quenchly
