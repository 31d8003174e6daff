// The part for sources that use Qt without its widgets.
#include "precompiled.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QTimer>
