#include "font_language.h"

namespace quenchly {

// The system takes its own list of preferred languages.
void chooseFontsFor(AppLanguage) {}

}  // namespace quenchly
