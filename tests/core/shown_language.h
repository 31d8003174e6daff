#pragma once

#include <gtest/gtest.h>

#include <array>

#include "l10n.h"

namespace quenchly::testing {

/// In the order in which tables of texts have their columns.
inline constexpr std::array allLanguages{AppLanguage::en,     AppLanguage::ja,     AppLanguage::ko,
                                         AppLanguage::zhHans, AppLanguage::zhHant, AppLanguage::tl};

/// Texts are English until a test chooses another language, which ends with it.
class InEnglish : public ::testing::Test {
protected:
    InEnglish() { L10n::testingLanguage = AppLanguage::en; }
    ~InEnglish() override { L10n::testingLanguage.reset(); }
};

}  // namespace quenchly::testing
