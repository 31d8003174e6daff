// What many sources include, compiled once in the builds that are made often. The release build and the one for macOS
// have no such header: there every source has to name all that it uses.
#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
