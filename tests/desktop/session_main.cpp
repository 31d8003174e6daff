#include <QGuiApplication>

#include "subject.h"

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return quenchly::testing::runSubject(argc, argv);
}
