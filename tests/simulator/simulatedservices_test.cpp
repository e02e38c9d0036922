// The simulated device memory services, used through the library's adapters as an application does.

#include "host/instrumentsession.h"
#include "rendezvous.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "simulator/simulatedinstrument.h"
#include "simulator/support/simulatorerror.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using namespace devices::service;
using simulator::Configuration;
using simulator::Operation;
using simulator::Timing;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

using namespace std::chrono_literals;

Configuration answering(Timing::Answers answers, std::chrono::microseconds delay = 0us)
{
    Configuration configuration;
    configuration.timing.answers = answers;
    configuration.timing.delay = delay;
    return configuration;
}

/// Everything behaves alike in both time models.
class SimulatedServices : public ::testing::TestWithParam<Timing::Answers>
{
protected:
    std::shared_ptr<simulator::SimulatedInstrument> instrument =
        std::make_shared<simulator::SimulatedInstrument>(answering(GetParam(), 100us));
    host::InstrumentSession session{instrument};
};

class SerialNumberThreads final : public ISerialNumberControl::Observer
{
public:
    void onSerialNumberEvent(const SerialNumberEvent& event) override
    {
        threads.push_back(std::this_thread::get_id());
        events.push_back(std::to_string(event.second) + " -> " + std::to_string(event.first));
    }

    std::vector<std::thread::id> threads;
    std::vector<std::string> events;
};

class MemoryProgress final : public IMemoryOperationsControl::IObserver
{
public:
    void onNotification1(const MemoryOperationEvent& event) override { tell("check", event); }
    void onNotification2(const MemoryOperationEvent& event) override { tell("erase", event); }
    void onNotification3(const MemoryOperationEvent& event) override { tell("read", event); }
    void onNotification4(const MemoryOperationEvent& event) override { tell("write", event); }

    std::vector<std::string> story;

private:
    void tell(const std::string& what, const MemoryOperationEvent& event)
    {
        story.push_back(what + " " + std::to_string(event.second) + "/" + std::to_string(event.first));
    }
};

} // namespace

TEST_P(SimulatedServices, KeepFilesWithinTheirCapacity)
{
    const auto files = session.control(controls::fileMemory);
    EXPECT_TRUE(files->writeFile("b", QByteArray(100, 'b')));
    EXPECT_TRUE(files->writeFile("a", {}));
    EXPECT_TRUE(files->writeFile("ä/../x", "text"));

    const auto list = files->fileList();
    ASSERT_TRUE(list);
    ASSERT_EQ(list->size(), 3);
    EXPECT_EQ((*list)[0].name, "b");
    EXPECT_EQ((*list)[0].word1, 100);
    EXPECT_EQ((*list)[2].name, "ä/../x");
    EXPECT_EQ(files->readFile((*list)[2]), "text");
    EXPECT_EQ(files->readFile((*list)[1]), QByteArray());

    const auto space = files->spaceInfo();
    ASSERT_TRUE(space);
    EXPECT_EQ(space->value1, 256U * 1024);
    EXPECT_EQ(space->value2, 104U);
    EXPECT_EQ(space->value3, 256U * 1024 - 104);

    EXPECT_EQ(files->writeFile("c", QByteArray(256 * 1024, 'c')).error(), "no space left");
    EXPECT_TRUE(files->writeFile("b", QByteArray(256 * 1024 - 4, 'c'))) << "what it replaces does not count";
    EXPECT_EQ(files->spaceInfo()->value3, 0U);
    EXPECT_TRUE(files->deleteFile({"b", 0, 0}));
    EXPECT_EQ(files->deleteFile({"b", 0, 0}).error(), "not found");
    EXPECT_EQ(files->readFile({"b", 0, 0}).error(), "not found");
}

TEST_P(SimulatedServices, MayHaveAFileStoreThatCannotBeUsed)
{
    const auto files = session.control(controls::fileMemory);
    instrument->setFileStoreAvailable(false);
    EXPECT_EQ(files->fileList().error(), "File memory control is unavailable");
    instrument->setFileStoreAvailable(true);
    EXPECT_TRUE(files->fileList());

    instrument->faults().answerWith(Operation::FileList, simulator::SimulatorError::StoreUnavailable);
    EXPECT_EQ(files->fileList().error(), "store unavailable");
}

TEST_P(SimulatedServices, FindAChangedByteOfTheMemory)
{
    const auto memory = session.control(controls::memoryOperations);
    EXPECT_THAT(*memory->read(), SizeIs(64 * 1024));
    EXPECT_THAT(*memory->read(), Each(std::byte{0xFF}));
    EXPECT_TRUE(memory->write({std::byte{1}, std::byte{2}}));
    EXPECT_TRUE(memory->integrityCheck());
    EXPECT_EQ((*memory->read())[1], std::byte{2});

    for (int time = 0; time < 2; ++time) {
        instrument->damageMemory(1);
        EXPECT_FALSE(memory->integrityCheck());
        EXPECT_EQ((*memory->read())[1], std::byte{0xFD});
    }
    EXPECT_TRUE(memory->erase());
    EXPECT_TRUE(memory->integrityCheck());
    EXPECT_THAT(*memory->read(), Each(std::byte{0xFF}));

    EXPECT_FALSE(memory->write(std::vector<std::byte>(64 * 1024 + 1)));
    EXPECT_THROW(instrument->damageMemory(64 * 1024), std::out_of_range);
}

TEST_P(SimulatedServices, TellOfTheProgressOfMemoryOperations)
{
    const auto memory = session.control(controls::memoryOperations);
    MemoryProgress progress;
    memory->addObserver(&progress);
    EXPECT_TRUE(memory->erase());
    instrument->waitUntilQuiet();
    EXPECT_THAT(progress.story,
                ElementsAre("erase 16384/65536", "erase 32768/65536", "erase 49152/65536", "erase 65536/65536"));
    progress.story.clear();

    EXPECT_TRUE(memory->read());
    EXPECT_TRUE(memory->write({}));
    EXPECT_TRUE(memory->integrityCheck());
    instrument->waitUntilQuiet();
    ASSERT_THAT(progress.story, SizeIs(12));
    EXPECT_EQ(progress.story[3], "read 65536/65536");
    EXPECT_EQ(progress.story[7], "write 65536/65536");
    EXPECT_EQ(progress.story[11], "check 65536/65536");
    memory->removeObserver(&progress);
}

TEST_P(SimulatedServices, KeepPotentiometersInRamAndEepromApart)
{
    const auto potentiometers = session.control(controls::potentiometers);
    ASSERT_THAT(potentiometers->potentiometers(), SizeIs(8));
    EXPECT_TRUE(potentiometers->writeToRam(0, 1));
    EXPECT_EQ(potentiometers->readFromEeprom(0), 128);
    EXPECT_EQ(instrument->potentiometerInRam(0), 1);
    EXPECT_TRUE(potentiometers->writeToEeprom(0, 2));
    EXPECT_EQ(potentiometers->readFromEeprom(0), 2);
    EXPECT_EQ(instrument->potentiometerInRam(0), 1);

    EXPECT_FALSE(potentiometers->writeToRam(0, 256));
    EXPECT_FALSE(potentiometers->writeToEeprom(0, -1));
    EXPECT_FALSE(potentiometers->readFromEeprom(8));
    EXPECT_FALSE(potentiometers->writeToRam(8, 0));
    EXPECT_EQ(instrument->potentiometerInRam(0), 1);
    EXPECT_THROW(instrument->potentiometerInRam(8), std::out_of_range);
}

TEST_P(SimulatedServices, TellOfTheSerialNumberOnAThreadOfTheirOwn)
{
    const auto serialNumber = session.control(controls::serialNumber);
    SerialNumberThreads observer;
    serialNumber->addObserver(&observer);
    EXPECT_TRUE(serialNumber->writeSerialNumber(5));
    EXPECT_TRUE(serialNumber->writeSerialNumber(6));
    instrument->waitUntilQuiet();

    EXPECT_THAT(observer.events, ElementsAre("100001 -> 5", "5 -> 6"));
    EXPECT_NE(observer.threads.front(), std::this_thread::get_id());
    EXPECT_THAT(observer.threads, Each(observer.threads.front()));
    EXPECT_EQ(serialNumber->serialNumber(), 6U);
    serialNumber->removeObserver(&observer);
}

TEST_P(SimulatedServices, KeepTheirStateAndTheirObserversAcrossARelease)
{
    const auto serialNumber = session.control(controls::serialNumber);
    const auto usbId = session.control(controls::usbId);
    SerialNumberThreads observer;
    serialNumber->addObserver(&observer);
    EXPECT_TRUE(serialNumber->writeSerialNumber(5));
    IUsbIdControl::UsbId words;
    words.id1 = 7;
    EXPECT_TRUE(usbId->writeUsbId(words));
    instrument->waitUntilQuiet();

    session.releaseControls([&] { instrument->releaseControls(); });
    EXPECT_FALSE(serialNumber->serialNumber());
    session.offerControls([&] { instrument->offerControls(); });

    EXPECT_EQ(serialNumber->serialNumber(), 5U);
    EXPECT_EQ(usbId->usbId().id1, 7);
    EXPECT_EQ(usbId->usbId().modelName, "2-port analyser, 8 GHz");
    EXPECT_THAT(usbId->usbIds(), SizeIs(5));
    EXPECT_TRUE(serialNumber->writeSerialNumber(6));
    instrument->waitUntilQuiet();
    EXPECT_THAT(observer.events, ElementsAre("100001 -> 5", "5 -> 6"));
    serialNumber->removeObserver(&observer);
}

TEST_P(SimulatedServices, MisbehaveAsTheyAreTold)
{
    const auto serialNumber = session.control(controls::serialNumber);
    simulator::Faults& faults = instrument->faults();

    faults.answerWith(Operation::SerialNumberWrite, std::make_error_code(std::errc::io_error));
    EXPECT_FALSE(serialNumber->writeSerialNumber(5));
    EXPECT_EQ(serialNumber->serialNumber(), 100'001U) << "it was not written";
    faults.answerWith(Operation::SerialNumberWrite, {0, simulator::simulatorCategory()});
    EXPECT_TRUE(serialNumber->writeSerialNumber(5)) << "the number 0 is a success";
    faults.heal(Operation::SerialNumberWrite);
    EXPECT_TRUE(serialNumber->writeSerialNumber(6));

    faults.throwFrom(Operation::SerialNumberRead);
    EXPECT_THROW(serialNumber->serialNumber(), std::runtime_error);
    faults.heal(Operation::SerialNumberRead);
    EXPECT_EQ(serialNumber->serialNumber(), 6U);

    faults.answerLate(Operation::SerialNumberRead, 20ms);
    const auto asked = std::chrono::steady_clock::now();
    EXPECT_EQ(serialNumber->serialNumber(), 6U);
    EXPECT_GE(std::chrono::steady_clock::now() - asked, 20ms);

    faults.releaseControlsDuring(Operation::SerialNumberRead);
    EXPECT_EQ(serialNumber->serialNumber(), 6U) << "the call that waits completes";
    EXPECT_FALSE(serialNumber->serialNumber()) << "the control is gone afterwards";
    faults.heal(Operation::SerialNumberRead);
    instrument->offerControls();
    EXPECT_EQ(serialNumber->serialNumber(), 6U);

    faults.throwFrom(Operation::SerialNumberRead);
    faults.spare(Operation::SerialNumberRead, 2);
    EXPECT_EQ(serialNumber->serialNumber(), 6U);
    EXPECT_EQ(serialNumber->serialNumber(), 6U);
    EXPECT_THROW(serialNumber->serialNumber(), std::runtime_error);
    EXPECT_THROW(serialNumber->serialNumber(), std::runtime_error);
}

TEST_P(SimulatedServices, ThrowFromEveryOtherOperationWhenTheyAreTold)
{
    simulator::Faults& faults = instrument->faults();
    for (const Operation operation : {Operation::PotentiometerList, Operation::UsbIdRead, Operation::UsbIdList,
                                      Operation::TermsRead, Operation::TermsWrite, Operation::TermsFlag})
        faults.throwFrom(operation);

    EXPECT_THROW(session.control(controls::potentiometers)->potentiometers(), std::runtime_error);
    EXPECT_THROW(session.control(controls::usbId)->usbId(), std::runtime_error);
    EXPECT_THROW(session.control(controls::usbId)->usbIds(), std::runtime_error);
    const auto terms = session.control(controls::systemTerms);
    EXPECT_THROW(terms->termsRecords(), std::runtime_error);
    EXPECT_THROW(terms->writeSystemTerms(QDateTime::currentDateTimeUtc(), 1.0, {}), std::runtime_error);
    EXPECT_THROW(terms->systemTermsFlag(), std::runtime_error);
    EXPECT_FALSE(instrument->storedTerms());
    faults.heal(Operation::TermsFlag);
    EXPECT_FALSE(terms->systemTermsFlag());
}

TEST_P(SimulatedServices, ServeManyThreadsAtOnce)
{
    const auto files = session.control(controls::fileMemory);
    const auto serialNumber = session.control(controls::serialNumber);
    SerialNumberThreads observer;
    serialNumber->addObserver(&observer);
    std::atomic<int> wrong = 0;
    {
        constexpr int threads = 4;
        Rendezvous nextRound(threads); // so that nobody is through before the others begin
        std::vector<std::jthread> callers;
        for (int i = 0; i < threads; ++i)
            callers.emplace_back([&, i] {
                const QString name = QString::number(i);
                for (int round = 0; round < 25; ++round) {
                    nextRound.arriveAndWait();
                    const QByteArray contents = QByteArray::number(round);
                    wrong += files->writeFile(name, contents) ? 0 : 1;
                    wrong += files->readFile({name, 0, 0}) == contents ? 0 : 1;
                    wrong += serialNumber->writeSerialNumber(static_cast<unsigned int>(round)) ? 0 : 1;
                }
            });
    }
    instrument->waitUntilQuiet();
    EXPECT_EQ(wrong, 0);
    ASSERT_THAT(observer.events, SizeIs(100));
    std::string held = "100001";
    for (const std::string& event : observer.events) {
        EXPECT_THAT(event, ::testing::StartsWith(held + " -> ")) << "each tells what the one before left";
        held = event.substr(event.rfind(' ') + 1);
    }
    serialNumber->removeObserver(&observer);
}

INSTANTIATE_TEST_SUITE_P(, SimulatedServices, ::testing::Values(Timing::Answers::AtOnce, Timing::Answers::Later),
                         [](const auto& instance) {
                             return instance.param == Timing::Answers::AtOnce ? "AtOnce" : "Later";
                         });

namespace {

std::shared_ptr<sdk::service::IMemorySerialNumberControl> serialNumberOf(simulator::SimulatedInstrument& instrument)
{
    return std::static_pointer_cast<sdk::service::IMemorySerialNumberControl>(
        instrument.findControl(devices::controls::serialNumber.keys.sdk));
}

} // namespace

TEST(SimulatedTiming, AnswersFirstWhatIsDueFirst)
{
    std::string order;
    {
        simulator::SimulatedInstrument instrument(answering(Timing::Answers::Later, 10h));
        const auto control = serialNumberOf(instrument);
        control->readSerialNumber([&](unsigned int, std::error_code) { order += "late "; });
        instrument.faults().answerLate(Operation::SerialNumberRead, 1us);
        std::promise<void> answered;
        control->readSerialNumber([&](unsigned int, std::error_code) {
            order += "soon ";
            answered.set_value();
        });
        answered.get_future().wait();
    }
    EXPECT_EQ(order, "soon late ");
}

TEST(SimulatedTiming, AnswersTheSameWayForTheSameSeed)
{
    // Asks several times at once and notes the order of the answers. They are minutes apart, however long the asking
    // takes, but come in this order when the instrument ends.
    const auto orderOfAnswers = [](std::uint32_t seed) {
        Configuration configuration = answering(Timing::Answers::Later, 10h);
        configuration.timing.order = Timing::Order::Shuffled;
        configuration.timing.seed = seed;
        std::string order;
        {
            simulator::SimulatedInstrument instrument(configuration);
            for (char name = 'a'; name < 'f'; ++name)
                serialNumberOf(instrument)->readSerialNumber([&order, name](unsigned int, std::error_code) {
                    order += name;
                });
        }
        return order;
    };

    const std::string first = orderOfAnswers(137);
    EXPECT_EQ(orderOfAnswers(137), first);
    EXPECT_NE(first, "abcde");
    EXPECT_THAT(first, SizeIs(5));
}

TEST(SimulatedInstrumentLife, AnswersWhatIsWaitingWhenItEnds)
{
    std::atomic<int> answered = 0;
    std::shared_ptr<sdk::service::IMemorySerialNumberControl> control;
    const auto count = [&](unsigned int, std::error_code) { ++answered; };
    {
        simulator::SimulatedInstrument instrument(answering(Timing::Answers::Later, 1h));
        control = serialNumberOf(instrument);
        control->readSerialNumber(count);
        instrument.faults().releaseControlsDuring(Operation::SerialNumberRead);
    }
    EXPECT_EQ(answered, 1);
    control->readSerialNumber(count);
    EXPECT_EQ(answered, 2) << "a control that is still held answers at once";
}

TEST(SimulatedInstrumentLife, TellsNobodyOnceTheControlIsGone)
{
    class Late final : public sdk::service::IMemorySerialNumberControl::Observer
    {
    public:
        void onSerialNumberEvent(unsigned int, unsigned int) override { ++told; }
        std::atomic<int> told = 0;
    } observer;

    simulator::SimulatedInstrument instrument(answering(Timing::Answers::Later));
    serialNumberOf(instrument)->addObserver(&observer);
    serialNumberOf(instrument)->writeSerialNumber(1, [](std::error_code) {});
    instrument.waitUntilQuiet();
    ASSERT_EQ(observer.told, 1) << "while the control is there";
    for (int round = 0; round < 200; ++round) {
        const int toldBefore = observer.told;
        // In every other round the instrument is kept from telling until the control is gone.
        const bool keptBusy = round % 2 == 0;
        std::promise<void> gone;
        serialNumberOf(instrument)->addObserver(&observer);
        if (keptBusy)
            serialNumberOf(instrument)->readSerialNumber([&gone](unsigned int, std::error_code) {
                gone.get_future().wait();
            });
        serialNumberOf(instrument)->writeSerialNumber(1, [](std::error_code) {});
        instrument.releaseControls();
        const int toldUntilGone = observer.told;
        gone.set_value();
        instrument.waitUntilQuiet();
        EXPECT_EQ(observer.told, toldUntilGone);
        if (keptBusy) {
            EXPECT_EQ(observer.told, toldBefore);
        }
        instrument.offerControls();
    }
}

namespace {

class StateFile : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QString path = folder.filePath("state");

    static std::string refusal(const QString& path)
    {
        simulator::SimulatedInstrument instrument;
        try {
            instrument.load(path);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "loaded";
    }
    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
    static void write(const QString& path, const QByteArray& contents)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(contents), contents.size());
    }
};

} // namespace

TEST_F(StateFile, BringsEverythingBack)
{
    const auto saved = std::make_shared<simulator::SimulatedInstrument>();
    {
        host::InstrumentSession session(saved);
        EXPECT_TRUE(session.control(controls::fileMemory)->writeFile("ä", QByteArray("\0\xFF", 2)));
        EXPECT_TRUE(session.control(controls::memoryOperations)->write({std::byte{7}}));
        EXPECT_TRUE(session.control(controls::potentiometers)->writeToRam(6, -7));
        EXPECT_TRUE(session.control(controls::potentiometers)->writeToEeprom(6, 8));
        EXPECT_TRUE(session.control(controls::serialNumber)->writeSerialNumber(0xFFFF'FFFF));
        EXPECT_TRUE(session.control(controls::usbId)->writeUsbId({1, 2, 65535, "", 0, 0, 0}));
        session.control(controls::loLeakage)->setEnabled(true);
        session.control(controls::yqSynthesis)->setSelectedIf(2);
        vna::ErrorTerms terms;
        terms.frequencies = {1e9};
        terms.ports = {{1, {{0.1, -0.2}}, {{0.3, 0.4}}, {{0.5, 0.6}}}};
        terms.portPairs = {{1, 2, {{1, 2}}, {{3, 4}}, {{5, 6}}}};
        session.control(controls::systemTerms)
            ->writeSystemTerms(QDateTime::fromSecsSinceEpoch(1'700'000'000), 0.5, {{INT64_MIN, 0.1, -1}}, terms);
        saved->damageMemory(100);
        saved->save(path);
    }

    const auto loaded = std::make_shared<simulator::SimulatedInstrument>();
    loaded->load(path);
    host::InstrumentSession session(loaded);
    EXPECT_EQ(session.control(controls::fileMemory)->readFile({"ä", 0, 0}), QByteArray("\0\xFF", 2));
    EXPECT_EQ(session.control(controls::memoryOperations)->read()->front(), std::byte{7});
    EXPECT_FALSE(session.control(controls::memoryOperations)->integrityCheck()) << "the damage is kept too";
    EXPECT_EQ(loaded->potentiometerInRam(6), -7);
    EXPECT_EQ(session.control(controls::potentiometers)->readFromEeprom(6), 8);
    EXPECT_EQ(session.control(controls::serialNumber)->serialNumber(), 0xFFFF'FFFF);
    EXPECT_EQ(session.control(controls::usbId)->usbId().id3, 65535);
    EXPECT_TRUE(session.control(controls::loLeakage)->isEnabled());
    EXPECT_EQ(session.control(controls::yqSynthesis)->selectedIf(), 2);
    const auto records = session.control(controls::systemTerms)->termsRecords();
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_EQ(records[0].key, INT64_MIN);
    EXPECT_EQ(records[0].value, 0.1);
    EXPECT_EQ(records[0].number, -1);

    const auto stored = loaded->storedTerms();
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->secondsSinceEpoch, 1'700'000'000);
    EXPECT_EQ(stored->parameter, 0.5);
    EXPECT_THAT(stored->terms.frequencies, ElementsAre(1e9));
    ASSERT_THAT(stored->terms.ports, SizeIs(1));
    EXPECT_EQ(stored->terms.ports[0].directivity.at(0).imaginary, -0.2);
    EXPECT_EQ(stored->terms.ports[0].reflectionTracking.at(0).real, 0.5);
    ASSERT_THAT(stored->terms.paths, SizeIs(1));
    EXPECT_EQ(stored->terms.paths[0].receiverPort, 2);
    EXPECT_EQ(stored->terms.paths[0].isolation.at(0).imaginary, 6.0);

    const QString again = folder.filePath("again");
    loaded->save(again);
    EXPECT_EQ(read(again), read(path)) << "nothing is lost on the way";
}

TEST_F(StateFile, IsRefusedWhenAnyByteOfItIsDamagedAndLeftAsItIs)
{
    simulator::Configuration small;
    small.memorySize = 4;
    simulator::SimulatedInstrument(small).save(path);
    const QByteArray whole = read(path);
    for (qsizetype i = 0; i < whole.size(); ++i) {
        QByteArray damaged = whole;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x11);
        write(path, damaged);
        EXPECT_THAT(refusal(path), HasSubstr("state")) << "byte " << i;
        EXPECT_EQ(read(path), damaged);
    }
    for (const qsizetype length : {qsizetype(0), qsizetype(1), whole.size() / 2, whole.size() - 1}) {
        write(path, whole.first(length));
        EXPECT_NE(refusal(path), "loaded") << length << " bytes";
    }
}

TEST_F(StateFile, OfAnotherKindIsNeitherLoadedNorOverwritten)
{
    write(path, "a letter");
    EXPECT_THAT(refusal(path), HasSubstr("no state of a simulated instrument"));
    EXPECT_THROW(simulator::SimulatedInstrument().save(path), std::runtime_error);
    EXPECT_EQ(read(path), "a letter");
    EXPECT_THAT(refusal(folder.filePath("nothing")), HasSubstr("cannot be read"));
    EXPECT_THROW(simulator::SimulatedInstrument().save(folder.filePath("no/such/folder")), std::runtime_error);
}

} // namespace tov::testing
