#include "enumeration.h"

namespace quenchly {

#ifdef MISTAKE
enum class Fruit { pear, apple };
#else
enum class Fruit { apple, pear };
#endif

template <>
inline constexpr auto rawValues<Fruit> = textsOfCases<Fruit>({{Fruit::apple, "apple"}, {Fruit::pear, "pear"}});

}  // namespace quenchly
