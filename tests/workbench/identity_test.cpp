#include "openpage.h"

#include <QLineEdit>
#include <QSpinBox>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using Answer = provider::ITestHooks::Answer;

class Identity : public OpenPage
{
protected:
    void SetUp() override { openPage(QStringLiteral("memory"), "identity-page"); }

    void enterSerialNumber(const QString& number)
    {
        auto& field = onPage<QLineEdit>("serial-number-new");
        field.clear();
        QTest::keyClicks(&field, number);
        QTest::keyClick(&field, Qt::Key_Return);
    }
};

} // namespace

TEST_F(Identity, IsShown)
{
    EXPECT_EQ(textOf("serial-number-now"), "100001");
    EXPECT_EQ(onPage<QLineEdit>("serial-number-new").text(), "100001");
    EXPECT_TRUE(textOf("usb-id-now").contains(", tag ")) << textOf("usb-id-now").toStdString();
    EXPECT_GT(onPage<QTableView>("usb-ids").model()->rowCount(), 0);
}

TEST_F(Identity, TakesASerialNumberWhenTheUserAgrees)
{
    enterSerialNumber("4294967295");
    answer("cancel");
    EXPECT_EQ(textOf("serial-number-now"), "100001");
    enterSerialNumber("4294967295");
    agree();
    EXPECT_EQ(textOf("serial-number-now"), "4294967295");
}

TEST_F(Identity, DoesNotAskForASerialNumberThatIsNone)
{
    enterSerialNumber("12 or so");
    EXPECT_EQ(fault(), "“12 or so” is no serial number: enter a whole number from 0 to 4294967295.");
    EXPECT_FALSE(onPage<QWidget>("question").isVisible());
    enterSerialNumber("12");
    EXPECT_EQ(fault(), "");
    EXPECT_TRUE(onPage<QWidget>("question").isVisible());
}

TEST_F(Identity, TakesAUsbIdentifierWhenTheUserAgrees)
{
    const auto enter = [this](int first) {
        onPage<QSpinBox>("usb-id-1").setValue(first);
        onPage<QSpinBox>("usb-id-2").setValue(0xBEEF);
        onPage<QSpinBox>("usb-id-3").setValue(7);
        press("write-usb-id");
    };
    const QString before = textOf("usb-id-now");
    enter(0x12);
    answer("cancel");
    EXPECT_EQ(textOf("usb-id-now"), before);
    enter(0x12);
    agree();
    EXPECT_TRUE(textOf("usb-id-now").startsWith("0x0012 0xBEEF 0x0007, ")) << textOf("usb-id-now").toStdString();
}

TEST_F(Identity, TakesOverAnIdentifierOnOffer)
{
    onPage<QSpinBox>("usb-id-1").setValue(1);
    onPage<QTableView>("usb-ids").selectRow(0);
    EXPECT_EQ(onPage<QSpinBox>("usb-id-1").value(), shown("usb-ids", 0, 0).toInt(nullptr, 0));
}

TEST_F(Identity, SaysInASentenceWhatFailed)
{
    misbehave(controls::serialNumber, "writeSerialNumber", Answer::WithError);
    enterSerialNumber("5");
    agree();
    waitForFault("Could not write the serial number 5: the instrument reported a failure.");
    misbehave(controls::usbId, "writeUsbId", Answer::WithError);
    press("write-usb-id");
    agree();
    waitForFault("Could not write the USB identifier: the instrument reported a failure.");
    misbehave(controls::usbId, "usbIds", Answer::Throwing);
    readAnew();
    waitUntil([this] { return fault().startsWith("Could not list the USB identifiers: "); });
}

TEST_F(Identity, ShowsWhichOfBothControlsIsAbsent)
{
    simulated->simulated().unfitControl(controls::usbId.keys.sdk);
    releaseControls();
    offerControls();
    EXPECT_TRUE(isAbsent(controls::usbId));
    EXPECT_FALSE(isAbsent(controls::serialNumber));
    EXPECT_FALSE(onPage<QPushButton>("write-usb-id").isEnabled());
    EXPECT_TRUE(onPage<QPushButton>("write-serial-number").isEnabled());
    EXPECT_EQ(fault(), "");
}

} // namespace tov::testing
