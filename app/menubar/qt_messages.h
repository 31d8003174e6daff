#pragma once

namespace quenchly {

/// Keeps to itself what Qt says about the session's runtime folder, which it looks into when an application object is
/// made: SingleInstance judges that folder, and bears that there is none. Everything else is shown as before.
void silenceRuntimeFolderWarnings();

}  // namespace quenchly
