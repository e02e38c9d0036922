// A state file of version 1.0.0, in which everything that a control can set has another value than at first: what was
// kept once stays readable.

#include "devices/controls.h"
#include "sdk/ifactorycorrectioncontrol.h"
#include "sdk/itemperaturecontrol.h"
#include "sdk/service/ifilememorycontrol.h"
#include "sdk/service/ikz515powercontrol.h"
#include "sdk/service/ikz515synthesiscontrol.h"
#include "sdk/service/iloleakagecontrol.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/imemoryusbidcontrol.h"
#include "sdk/service/ipotentiometerscontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iulkpowercontrol.h"
#include "sdk/service/iulksynthesiscontrol.h"
#include "sdk/service/iwn0807powermodulecontrol.h"
#include "sdk/service/iwn0807synthesiscontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"
#include "simulator/simulatedinstrument.h"
#include "simulator/support/statefile.h"

#include <QCborMap>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

namespace controls = devices::controls;
using namespace sdk::service;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class StateFileOfVersion1 : public ::testing::Test
{
protected:
    StateFileOfVersion1() { instrument.load(STATE_FILE_1_0_0); }

    template <typename SdkIface, typename... Types>
    std::shared_ptr<SdkIface> control(const devices::ControlKind<SdkIface, Types...>& kind)
    {
        return std::static_pointer_cast<SdkIface>(instrument.findControl(kind.keys.sdk));
    }

    simulator::SimulatedInstrument instrument;
};

/// Where an operation answers, which is at once.
template <typename Value>
class Answer
{
public:
    auto callback()
    {
        return [this](Value value, std::error_code error) {
            EXPECT_FALSE(error) << error.message();
            m_value = std::move(value);
        };
    }

    const Value& value() const { return m_value.value(); }

private:
    std::optional<Value> m_value;
};

} // namespace

TEST_F(StateFileOfVersion1, IsWhatIsSavedAgain)
{
    const QTemporaryDir folder;
    const QString again = folder.filePath("again");
    instrument.save(again);
    EXPECT_EQ(simulator::readStateFile(again), simulator::readStateFile(STATE_FILE_1_0_0));
}

TEST_F(StateFileOfVersion1, HoldsTheFiles)
{
    const auto files = control(controls::fileMemory);
    Answer<std::vector<IFileMemoryControl::FileInfo>> list;
    files->fileList(list.callback());
    ASSERT_THAT(list.value(), SizeIs(2));
    EXPECT_EQ(list.value()[0].name, "ä.cal");
    EXPECT_EQ(list.value()[1].name, "empty");
    Answer<std::vector<unsigned char>> contents;
    files->readFile(list.value()[0], contents.callback());
    EXPECT_THAT(contents.value(), ElementsAre(0, 127, 255));
    Answer<IFileMemoryControl::SpaceInfo> space;
    files->spaceInfo(space.callback());
    EXPECT_EQ(space.value().value1, 1000U);
}

TEST_F(StateFileOfVersion1, HoldsTheMemoryWithItsDamage)
{
    const auto memory = control(controls::memoryOperations);
    Answer<std::vector<std::byte>> contents;
    memory->read(contents.callback());
    EXPECT_THAT(contents.value(), ElementsAre(std::byte{1}, std::byte{2}, std::byte{3}, std::byte{0xFF},
                                              std::byte{0xFF}, std::byte{0}, std::byte{0xFF}, std::byte{0xFF}));
    std::error_code checked;
    memory->integrityCheck([&](std::error_code error) { checked = error; });
    EXPECT_EQ(checked.message(), "memory damaged");
}

TEST_F(StateFileOfVersion1, HoldsThePotentiometers)
{
    const auto potentiometers = control(controls::potentiometers);
    const std::vector<int> ram = {11, 12, 13, 1014, 15, 16, -17, -18};
    const std::vector<int> eeprom = {21, 22, 23, 1023, 25, 26, -27, -28};
    for (std::size_t i = 0; i < ram.size(); ++i) {
        EXPECT_EQ(instrument.potentiometerInRam(i), ram[i]);
        Answer<int> inEeprom;
        potentiometers->readFromEeprom(i, inEeprom.callback());
        EXPECT_EQ(inEeprom.value(), eeprom[i]) << i;
    }
}

TEST_F(StateFileOfVersion1, HoldsTheSerialNumberAndTheUsbIdentifier)
{
    Answer<unsigned int> number;
    control(controls::serialNumber)->readSerialNumber(number.callback());
    EXPECT_EQ(number.value(), 4'000'000'001U);
    const auto id = control(controls::usbId)->usbId();
    EXPECT_THAT((std::vector{id.id1, id.id2, id.id3}), ElementsAre(0x1234, 0x5678, 0xFFFF));
}

TEST_F(StateFileOfVersion1, HoldsTheSystemTerms)
{
    const auto terms = control(controls::systemTerms);
    EXPECT_TRUE(terms->systemTermsFlag());
    ASSERT_THAT(terms->termsRecords(), SizeIs(1));
    EXPECT_EQ(terms->termsRecords()[0].key, -7);
    const auto stored = instrument.storedTerms();
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->secondsSinceEpoch, 1'700'000'000);
    EXPECT_EQ(stored->parameter, 0.25);
    EXPECT_THAT(stored->terms.frequencies, ElementsAre(1e9, 2e9));
    EXPECT_EQ(stored->terms.ports.at(0).sourceMatch.at(0).imaginary, -0.4);
    EXPECT_EQ(stored->terms.paths.at(0).isolation.at(0).real, 0.9);
}

TEST_F(StateFileOfVersion1, HoldsTheCalibrations)
{
    const auto ifsw = instrument.storedIfswCalibration();
    ASSERT_TRUE(ifsw);
    EXPECT_GT(ifsw->time.time_since_epoch().count(), 0);
    EXPECT_THAT(ifsw->data.values, ElementsAre(1.5, 2.5));
    EXPECT_THAT(ifsw->data.groups[0].first, IsEmpty());
    ASSERT_THAT(ifsw->data.groups[2].second, SizeIs(1));
    EXPECT_EQ(ifsw->data.groups[2].second[0].value2, -8.0);

    const auto power = instrument.storedFactoryPowerCalibration();
    ASSERT_TRUE(power);
    EXPECT_EQ(power->time.time_since_epoch().count(), -5);
    EXPECT_EQ(power->parameter, 2.5);
    ASSERT_THAT(power->points, SizeIs(1));
    EXPECT_EQ(power->points[0].value3, 0.1F);
    EXPECT_EQ(power->points[0].value9, -9.0F);

    using Status = simulator::CalibrationUnit::Status;
    const auto& unit1 = instrument.calibrationUnit(controls::calibrationController1.keys.sdk);
    const auto& unit2 = instrument.calibrationUnit(controls::calibrationController2.keys.sdk);
    EXPECT_EQ(unit1.status(), Status::Disconnected);
    EXPECT_EQ(unit1.configuration(), "4 ports");
    EXPECT_EQ(unit2.status(), Status::WarmingUp);
    EXPECT_EQ(unit2.configuration(), "2 ports, ä");
}

TEST_F(StateFileOfVersion1, HoldsTheCorrectionsAndTheTemperatures)
{
    const auto corrections = control(controls::factoryCorrections);
    EXPECT_EQ(corrections->validCorrections(), 0x137D);
    EXPECT_EQ(corrections->enabledCorrections(), 0x0009);
    const auto modules = control(controls::temperature)->modulesTemperature();
    EXPECT_NEAR(modules.at("Reference"), 23.0 + 37.0 * 0.6321, 0.06) << "after its time constant, 60 s";
    EXPECT_NEAR(modules.at("Power supply"), 23.0 + 32.0 * 0.4866, 0.06);
}

TEST_F(StateFileOfVersion1, HoldsTheLoLeakageAndTheYqSynthesis)
{
    EXPECT_TRUE(control(controls::loLeakage)->isEnabled());
    const auto yq = control(controls::yqSynthesis);
    EXPECT_TRUE(yq->manualIfEnabled());
    EXPECT_EQ(yq->selectedIf(), 3);
}

TEST_F(StateFileOfVersion1, HoldsTheUlk)
{
    const auto synthesis = control(controls::ulkSynthesis);
    EXPECT_TRUE(synthesis->loLeakageMode());
    EXPECT_TRUE(synthesis->manualIfEnabled());
    EXPECT_EQ(synthesis->selectedIf(), 2);
    EXPECT_EQ(synthesis->filter1Frequency(), 1.25e9);
    EXPECT_TRUE(synthesis->manualRefEnabled());
    EXPECT_EQ(synthesis->selectedRef(), 1);

    const auto power = control(controls::ulkPower);
    EXPECT_EQ(power->loPower(), 63);
    EXPECT_EQ(power->rfPower(), 7);
    EXPECT_EQ(power->syntPowerMode(), 1);
    EXPECT_EQ(power->attenuationMode(), 1);
    EXPECT_EQ(power->attenuationStep(), 31);
    EXPECT_EQ(power->stepAttenuatorMode(), 3);
    EXPECT_TRUE(power->discreteAttenuatorEnabled());
    EXPECT_EQ(power->discreteAttenuatorMode(), 1);
    EXPECT_EQ(power->commonAttenuationMode(), 1);
    EXPECT_EQ(power->commonAttenuationStep(), 9);
    EXPECT_EQ(power->ampTPort1(), 1);
    EXPECT_EQ(power->ampTPort2(), 1);
    EXPECT_EQ(power->ampRPort1(), 1);
}

TEST_F(StateFileOfVersion1, HoldsTheKz515)
{
    EXPECT_EQ(control(controls::kz515Synthesis)->currentReferenceFrequency(), 100e6);

    const auto power = control(controls::kz515Power);
    using ControlMode = IKZ515PowerControl::ControlMode;
    EXPECT_EQ(power->powerControlMode(), ControlMode::Mode1);
    EXPECT_EQ(power->loPower(), 100);
    EXPECT_EQ(power->rfPower(), 1);
    EXPECT_EQ(power->dacControlMode(), ControlMode::Mode1);
    EXPECT_EQ(power->dacMode(), 2);
    EXPECT_EQ(power->unionDac(), 17);
    EXPECT_EQ(power->dacA(), 17);
    EXPECT_EQ(power->dacB(), 4095);
    EXPECT_EQ(power->referenceGain(), 6);
    EXPECT_EQ(power->signalGain(), 18);
}

TEST_F(StateFileOfVersion1, HoldsTheWn0807)
{
    const auto power = control(controls::wn0807Power);
    EXPECT_EQ(power->dacMode(), 3);
    EXPECT_EQ(power->powerMode(), 1);
    EXPECT_EQ(power->stepAttenuatorMode(), 4);
    EXPECT_EQ(power->discreteAttenuatorMode(), 2);
    EXPECT_EQ(power->powerConstant(), 2);
    EXPECT_EQ(power->rfDac(), 65535);
    EXPECT_EQ(power->splitDac(), 2);
    EXPECT_EQ(power->splitDds(), 3);
    EXPECT_EQ(power->attenuationDb(), 10.25);
    EXPECT_EQ(power->attenuationStep(), 41);
    EXPECT_TRUE(power->discreteAttenuatorEnabled());
    EXPECT_EQ(power->squarePatternStep(), 0.1);
    EXPECT_EQ(power->ddsCorrectionMode(), 1);
    EXPECT_TRUE(power->ddsCorrectionEnabled());

    const auto synthesis = control(controls::wn0807Synthesis);
    EXPECT_EQ(synthesis->loPower(), 1);
    EXPECT_EQ(synthesis->rfPower(), 63);
    EXPECT_EQ(synthesis->rfPowerMode(), 2);
    EXPECT_EQ(synthesis->ifMode(), 1);
    EXPECT_EQ(synthesis->selectedIf(), 2);
    EXPECT_EQ(synthesis->rfFilterMode(), 2);
    EXPECT_EQ(synthesis->selectedRfFilter(), 3);
    EXPECT_EQ(synthesis->ddsSwitchFreq(), 2e6);
    EXPECT_EQ(synthesis->delayMode(), 1);
    EXPECT_EQ(synthesis->measureDelay().count(), 0.125);
}

TEST_F(StateFileOfVersion1, HoldsTheRowsOfTheWn0807)
{
    const auto synthesis = control(controls::wn0807Synthesis);
    const auto table = synthesis->rfPowerRangeTable();
    ASSERT_THAT(table, SizeIs(5));
    for (int row = 0; row < 5; ++row) {
        EXPECT_EQ(table[static_cast<std::size_t>(row)].frequency, 1e9 + row) << row;
        EXPECT_EQ(table[static_cast<std::size_t>(row)].power, 10 + row) << row;
    }
    for (int capacitor = 0; capacitor < 2; ++capacitor) {
        EXPECT_EQ(synthesis->capacitanceMode(capacitor), 2 + capacitor);
        ASSERT_TRUE(synthesis->capacitanceRange(capacitor));
        EXPECT_EQ(synthesis->capacitanceRange(capacitor)->first, 3.5 + capacitor);
        EXPECT_EQ(synthesis->capacitanceRange(capacitor)->second, 99.5 + capacitor / 2.0);
    }
    for (int filter = 0; filter < 4; ++filter)
        EXPECT_EQ(synthesis->rfFilterFrom(filter), 5e9 + filter) << filter;
    EXPECT_FALSE(synthesis->rfFilterFrom(4));
    EXPECT_EQ(synthesis->capacitanceMode(-1), 0);
    EXPECT_FALSE(synthesis->capacitanceRange(2));
}

class StateFileContents : public ::testing::Test
{
protected:
    // What is wrong with a file that holds this of a module; empty if nothing is.
    std::string wrongWith(const QString& control, const QCborMap& values)
    {
        simulator::writeStateFile(path, {{control, QCborMap{{QStringLiteral("values"), values}}}});
        return loaded();
    }
    std::string loaded()
    try {
        instrument.load(path);
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }

    QByteArray read() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QByteArray& bytes) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    simulator::SimulatedInstrument instrument;
    const std::shared_ptr<IKZ515PowerControl> kz515 =
        std::static_pointer_cast<IKZ515PowerControl>(instrument.findControl(controls::kz515Power.keys.sdk));
    const QTemporaryDir folder;
    const QString path = folder.filePath("state");
};

TEST_F(StateFileContents, LeaveWhatTheyDoNotNameAsAtFirst)
{
    const int atFirst = kz515->rfPower();
    kz515->setRfPower(3);
    EXPECT_EQ(wrongWith("kz515-power", {{QStringLiteral("loPower"), 20.0}}), "");
    EXPECT_EQ(kz515->loPower(), 20);
    EXPECT_EQ(kz515->rfPower(), atFirst);
}

TEST_F(StateFileContents, AreRefusedWhenNoInstrumentCanHaveThem)
{
    kz515->setRfPower(3);
    const std::pair<QString, QCborMap> impossible[] = {
        {"kz515-power", {{QStringLiteral("loPower"), 200.0}}},
        {"kz515-power", {{QStringLiteral("dacMode"), 9.0}}},
        {"kz515-power", {{QStringLiteral("loPower"), QStringLiteral("much")}}},
        {"kz515-power", {{QStringLiteral("other"), 1.0}}},
        {"toaster", {{QStringLiteral("heat"), 1.0}}},
    };
    for (const auto& [control, values] : impossible) {
        EXPECT_THAT(wrongWith(control, values), ::testing::HasSubstr("no instrument can have"));
        EXPECT_EQ(kz515->rfPower(), 3) << "the instrument is as it was";
    }
}

TEST_F(StateFileContents, AreRefusedWhenANumberIsBeyondAllThatThereAre)
{
    for (const double number : {std::nan(""), HUGE_VAL, -0x1p64}) {
        simulator::writeStateFile(path, {{"factory-corrections", QCborMap{{QStringLiteral("valid"), number}}}});
        EXPECT_THAT(loaded(), ::testing::HasSubstr("no instrument can have"));
    }
}

TEST_F(StateFileContents, AreRefusedWhenSomethingStandsBehindThem)
{
    instrument.save(path);
    const QByteArray good = read();
    EXPECT_EQ(loaded(), "");
    for (const QByteArray& behind : {QByteArray("\0", 1), QByteArray("a letter"), good}) {
        write(good + behind);
        EXPECT_THAT(loaded(), ::testing::HasSubstr("no state of a simulated instrument, or it is damaged"));
        EXPECT_EQ(read(), good + behind);
    }
}

} // namespace tov::testing
