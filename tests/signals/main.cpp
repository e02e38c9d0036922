#include <QCoreApplication>

#include <gtest/gtest.h>

// These tests run Qt's event loops, which need an application object.
int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
