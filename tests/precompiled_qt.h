// Its Qt part, for the tests that use Qt.
#include "precompiled.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QWidget>
