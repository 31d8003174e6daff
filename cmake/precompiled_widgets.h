// The part for sources that use Qt's widgets.
#include "precompiled_qt.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>
