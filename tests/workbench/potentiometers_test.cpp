#include "openpage.h"
#include "workbench/models/potentiometersmodel.h"

#include <QSignalSpy>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using Answer = provider::ITestHooks::Answer;
using workbench::PotentiometersModel;

constexpr auto table = "potentiometers-table";

class Potentiometers : public OpenPage
{
protected:
    void SetUp() override { openPage(QStringLiteral("memory"), "potentiometers-page"); }
};

} // namespace

TEST(PotentiometersModel, TellsWhatIsEnteredAndShowsItOnlyWhenItWasTaken)
{
    PotentiometersModel model;
    model.setPotentiometers({{.info = {.name = "one", .word1 = 3, .word2 = 9}, .eeprom = 5},
                             {.info = {.name = "two", .word1 = 1, .word2 = 2}, .eeprom = {}}});
    const auto shown = [&](int row, int column) { return model.index(row, column).data().toString(); };
    QSignalSpy eeprom(&model, &PotentiometersModel::eepromEntered);
    QSignalSpy ram(&model, &PotentiometersModel::ramEntered);

    EXPECT_TRUE(model.setData(model.index(0, PotentiometersModel::Eeprom), 7, Qt::EditRole));
    EXPECT_TRUE(model.setData(model.index(1, PotentiometersModel::Ram), "2", Qt::EditRole));
    EXPECT_FALSE(model.setData(model.index(0, PotentiometersModel::Ram), "many", Qt::EditRole));
    EXPECT_FALSE(model.setData(model.index(0, PotentiometersModel::Name), 7, Qt::EditRole));
    ASSERT_EQ(eeprom.size(), 1);
    EXPECT_EQ(eeprom.at(0), QVariantList({0, 7}));
    ASSERT_EQ(ram.size(), 1);
    EXPECT_EQ(ram.at(0), QVariantList({1, 2}));
    EXPECT_EQ(shown(0, PotentiometersModel::Eeprom), "5");
    EXPECT_EQ(shown(1, PotentiometersModel::Eeprom), "failed");
    EXPECT_EQ(shown(1, PotentiometersModel::Ram), "–");

    model.setEeprom(0, 7);
    model.setRam(1, 2);
    EXPECT_EQ(shown(0, PotentiometersModel::Eeprom), "7");
    EXPECT_EQ(shown(1, PotentiometersModel::Ram), "2");
    model.forgetRam();
    EXPECT_EQ(shown(1, PotentiometersModel::Ram), "–");
}

TEST_F(Potentiometers, AreShownWithWhatIsInEeprom)
{
    EXPECT_EQ(onPage<QTableView>(table).model()->rowCount(), 8);
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Name), "LO level");
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Least), "0");
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Most), "255");
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Eeprom), "128");
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Ram), "–");
}

TEST_F(Potentiometers, AreWrittenToEepromAndToRamEachByItself)
{
    enter(table, 0, PotentiometersModel::Eeprom, 77);
    enter(table, 0, PotentiometersModel::Ram, 33);
    waitUntil([this] { return shown(table, 0, PotentiometersModel::Ram) == "33"; });
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Eeprom), "77");
    EXPECT_EQ(simulated->simulated().potentiometerInRam(0), 33);
    EXPECT_EQ(fault(), "");
}

TEST_F(Potentiometers, ShowInTheirPlaceAndInASentenceWhatFailed)
{
    enter(table, 0, PotentiometersModel::Ram, 1000);
    waitForFault("Could not write 1000 to RAM of potentiometer 0: the instrument reported a failure.");
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Ram), "–");

    QString noted;
    QObject::connect(&instrument, &workbench::Instrument::callChanged, window.get(), [&](const workbench::Call& call) {
        if (call.state == workbench::Call::State::Failed && call.what == "read the potentiometers")
            noted = call.error;
    });
    misbehave(controls::potentiometers, "readFromEeprom", Answer::WithError);
    readAnew();
    waitForFault(
        "Could not read what is in EEPROM of the potentiometers 0, 1, 2, 3, 4, 5, 6, 7: the instrument reported "
        "a failure.");
    EXPECT_EQ(shown(table, 3, PotentiometersModel::Eeprom), "failed");
    EXPECT_EQ(noted, "the instrument reported a failure for EEPROM of 0, 1, 2, 3, 4, 5, 6, 7");

    misbehave(controls::potentiometers, "potentiometers", Answer::Throwing);
    readAnew();
    waitUntil([this] { return fault().startsWith("Could not read the potentiometers: "); });
}

TEST_F(Potentiometers, AreReadAgainWhenTheControlsCameBack)
{
    enter(table, 0, PotentiometersModel::Ram, 33);
    waitUntil([this] { return shown(table, 0, PotentiometersModel::Ram) == "33"; });
    releaseControls();
    EXPECT_TRUE(isAbsent(controls::potentiometers));
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Ram), "–"); // the next ones may have another
    offerControls();
    EXPECT_FALSE(isAbsent(controls::potentiometers));
    EXPECT_EQ(shown(table, 0, PotentiometersModel::Eeprom), "128");
}

} // namespace tov::testing
