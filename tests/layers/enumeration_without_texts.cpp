#include "enumeration.h"

namespace quenchly {

enum class Fruit { apple, pear };

#ifndef MISTAKE
template <>
inline constexpr auto rawValues<Fruit> = textsOfCases<Fruit>({{Fruit::apple, "apple"}, {Fruit::pear, "pear"}});
#endif

std::string_view nameOf(Fruit fruit)
{
    return rawValue(fruit);
}

}  // namespace quenchly
