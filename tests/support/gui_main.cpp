// Of the rooms that need Qt's event loop, with windows or without.
#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8"); // the system's texts stand as literals in the tests
    const Application application(argc, argv);
#ifdef QT_WIDGETS_LIB
    QApplication::setQuitOnLastWindowClosed(false);
#endif
    return RUN_ALL_TESTS();
}
