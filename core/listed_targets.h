#pragma once

#include <array>
#include <span>
#include <string_view>

/// The AI servers that Protection applies to: how the checker's files name them, how their processes are found, what
/// they are called, and which set-aside entries are theirs. A test compares the names with the texts of every language.
namespace quenchly::ListedTargets {

/// A search of the process table, by the exact name or by an expression over the command line.
enum class SearchBy { name, commandLine };

/// A name that the checker's files have for a target, and the search that finds its processes.
struct Key {
    std::string_view key;
    SearchBy by;
    std::string_view pattern;
};

struct Target {
    std::string_view displayName;  ///< of its row
    std::string_view nameInTexts;  ///< in the texts that say what Protection applies to
    std::span<const Key> keys;     ///< the row is looked for by the first; paused labels may be any
    /// A set-aside command line with one of these in it, in lower case, is the target's. None: it is never set aside.
    std::span<const std::string_view> inCommand;
    /// The same for the label of a set-aside launchd job, which "mlx" alone is enough for.
    std::span<const std::string_view> inLaunchdLabel;
    std::string_view launchdRowLabel;
};

namespace Tables {

inline constexpr std::string_view lmStudioService = "LM Studio.app/Contents/MacOS/LM Studio --run-as-service";

inline constexpr std::array ollamaKeys{Key{"ollama", SearchBy::name, "ollama"}};
inline constexpr std::array mlxKeys{Key{"mlx", SearchBy::commandLine, "mlx_lm.server"},
                                    Key{"mlx_lm.server", SearchBy::commandLine, "mlx_lm.server"}};
inline constexpr std::array lmStudioKeys{Key{"lmstudio", SearchBy::commandLine, lmStudioService},
                                         Key{"lms", SearchBy::commandLine, lmStudioService}};
inline constexpr std::array llamaKeys{Key{"llama-server", SearchBy::name, "llama-server"},
                                      Key{"llama-cpp-server", SearchBy::name, "llama-cpp-server"}};

inline constexpr std::array<std::string_view, 1> ollamaMarks{"ollama"};
inline constexpr std::array<std::string_view, 2> mlxCommands{"mlx_lm.server", "mlx_lm serve"};
inline constexpr std::array<std::string_view, 1> mlxMarks{"mlx"};
inline constexpr std::array<std::string_view, 2> lmStudioMarks{"lm-studio", "lmstudio"};

}  // namespace Tables

/// In the order of the rows.
inline constexpr std::array<Target, 4> all{{
    {.displayName = "Ollama",
     .nameInTexts = "Ollama",
     .keys = Tables::ollamaKeys,
     .inCommand = Tables::ollamaMarks,
     .inLaunchdLabel = Tables::ollamaMarks,
     .launchdRowLabel = "ollama"},
    {.displayName = "MLX LM Server",
     .nameInTexts = "MLX",
     .keys = Tables::mlxKeys,
     .inCommand = Tables::mlxCommands,
     .inLaunchdLabel = Tables::mlxMarks,
     .launchdRowLabel = "MLX"},
    {.displayName = "LM Studio",
     .nameInTexts = "LM Studio",
     .keys = Tables::lmStudioKeys,
     .inCommand = Tables::lmStudioMarks,
     .inLaunchdLabel = Tables::lmStudioMarks,
     .launchdRowLabel = "LM Studio"},
    {.displayName = "llama.cpp", .nameInTexts = "llama.cpp", .keys = Tables::llamaKeys},
}};

}  // namespace quenchly::ListedTargets
