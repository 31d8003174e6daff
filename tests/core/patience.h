#pragma once

namespace quenchly::testing {

/// How long a test waits for what has to happen, in milliseconds. It only ends a hang: nothing is said by how soon
/// something comes.
inline constexpr int patience = 240'000;

}  // namespace quenchly::testing
