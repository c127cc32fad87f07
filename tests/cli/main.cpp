#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    qputenv("LC_ALL", "C.UTF-8"); // the system's error texts stand as literals in the tests
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
