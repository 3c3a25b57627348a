#include "lib/Style.h"
#include "platform/desktop/LinuxPlatform.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The page of the map cannot have its own sandbox when root runs the tests.
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    platform::initialiseLayer();
    style::apply(application);
    return RUN_ALL_TESTS();
}
