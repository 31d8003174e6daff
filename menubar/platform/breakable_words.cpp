#include "breakable_words.h"

#include <QRegularExpression>

namespace quenchly {

QString withBreakableWords(QString text)
{
    static const QRegularExpression longRun(QStringLiteral("(\\S{40})(?=\\S)"));
    return text.replace(longRun, QStringLiteral("\\1\u200B"));
}

}  // namespace quenchly
