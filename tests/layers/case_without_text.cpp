#include "enumeration.h"

namespace quenchly {

enum class Fruit {
    apple,
    pear,
#ifdef MISTAKE
    quince,
#endif
};

template <>
inline constexpr auto rawValues<Fruit> = textsOfCases<Fruit>({{Fruit::apple, "apple"}, {Fruit::pear, "pear"}});

}  // namespace quenchly
