#include "enumeration.h"

namespace quenchly {

enum class Fruit {
    apple,
    pear,
#ifndef MISTAKE
    quince,
#endif
};

template <>
inline constexpr auto rawValues<Fruit> =
    textsOfCases<Fruit>({{Fruit::apple, "apple"}, {Fruit::pear, "pear"}, {Fruit(2), "quince"}});

}  // namespace quenchly
