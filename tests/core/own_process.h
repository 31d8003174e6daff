#pragma once

namespace quenchly::testing {

/// How many descriptors this process has open.
int openDescriptors();

/// Whether this process has no child, neither running nor waiting to be collected.
bool hasNoChild();

}  // namespace quenchly::testing
