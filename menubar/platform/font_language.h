#pragma once

#include "app_language.h"

namespace quenchly {

/// Lets fonts be chosen for a language: Chinese, Japanese and Korean draw the same character each in their own way. To
/// be called once, before there is a QGuiApplication. What `System::environment` is given to does not notice.
void chooseFontsFor(AppLanguage language);

}  // namespace quenchly
