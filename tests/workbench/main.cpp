#include "eventtimes.h"

#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// These tests drive windows. What they remember is forgotten with the folder.
int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QLocale::setDefault(QLocale::c()); // as the tests write numbers
    const tov::testing::TimingApplication application(argc, argv);
    const QTemporaryDir folder;
    QCoreApplication::setOrganizationName(QStringLiteral("DevicesService"));
    QCoreApplication::setApplicationName(QStringLiteral("workbench-tests"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    return RUN_ALL_TESTS();
}
