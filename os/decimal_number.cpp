#include "decimal_number.h"

#include <locale.h>
#include <stdlib.h>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

#include <cmath>
#include <cstddef>
#include <string_view>

namespace quenchly {
namespace {

std::size_t skipDigits(std::string_view text, std::size_t at)
{
    while (at < text.size() && text[at] >= '0' && text[at] <= '9')
        ++at;
    return at;
}

/// sign? (digits point? digits? | point digits) (e sign? digits)?
bool isFloatingLiteral(std::string_view text)
{
    const auto isSign = [&](std::size_t i) { return i < text.size() && (text[i] == '+' || text[i] == '-'); };
    const std::size_t mantissa = isSign(0) ? 1 : 0;
    std::size_t at = skipDigits(text, mantissa);
    std::size_t digits = at - mantissa;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fraction = at + 1;
        at = skipDigits(text, fraction);
        digits += at - fraction;
    }
    if (digits == 0)
        return false;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        const std::size_t exponent = at + 1 + (isSign(at + 1) ? 1 : 0);
        at = skipDigits(text, exponent);
        if (at == exponent)
            return false;
    }
    return at == text.size();
}

}  // namespace

std::optional<double> decimalNumber(const std::string& text)
{
    if (!isFloatingLiteral(text))
        return std::nullopt;
    // The decimal point must not depend on the user's locale, and the oldest macOS lacks floating from_chars.
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    const double value = strtod_l(text.c_str(), nullptr, classic);
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

}  // namespace quenchly
