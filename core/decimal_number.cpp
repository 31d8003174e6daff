#include "decimal_number.h"

#include <cmath>
#include <cstddef>
#include <locale>
#include <sstream>
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

/// Through a stream with the classic locale: the decimal point must not depend on the user's, and floating from_chars
/// is missing on the oldest macOS that we support.
std::optional<double> decimalNumber(const std::string& text)
{
    if (!isFloatingLiteral(text))
        return std::nullopt;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    if (stream.fail() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

}  // namespace quenchly
