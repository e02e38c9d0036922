// What holds for every operation that waits for an answer, as one table of operations that every test walks.

#include "devices/reacquiringcontrol.h"
#include "fakes/fakefilememorycontrol.h"
#include "fakes/fakememoryoperationscontrol.h"
#include "fakes/fakememoryserialnumbercontrol.h"
#include "fakes/fakememoryusbidcontrol.h"
#include "fakes/fakepotentiometerscontrol.h"
#include "rendezvous.h"
#include "service/memory/sdkfilememorycontrol.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkmemoryusbid.h"
#include "service/memory/sdkpotentiometerscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"

#include <gmock/gmock.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#ifdef __linux__
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace tov::testing {

namespace {

using namespace devices::service;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::string reason(const QString& text)
{
    return text.toStdString();
}

template <typename Error>
    requires std::is_enum_v<Error>
std::string reason(Error error)
{
    return std::to_string(static_cast<unsigned int>(error));
}

template <typename Value, typename Error, typename Show>
std::string shown(const std::expected<Value, Error>& result, Show show)
{
    return result ? show(*result) : "failed: " + reason(result.error());
}

template <typename Error>
std::string shown(const std::expected<void, Error>& result)
{
    return result ? "done" : "failed: " + reason(result.error());
}

std::string shown(bool result)
{
    return result ? "done" : "failed";
}

/// An adapter on an instrument whose control answers as it is told.
class BridgeStage
{
public:
    virtual ~BridgeStage() = default;

    virtual std::string call() = 0;
    virtual AnsweringControl& control() = 0;
    virtual void release() = 0;
    virtual bool controlLives() const = 0;
};

template <typename Adapter, typename SdkIface, typename Fake>
class BridgeStageFor final : public BridgeStage
{
public:
    BridgeStageFor(std::function<std::string(Adapter&)> call, const std::string& operation, const std::any& value)
        : m_call(std::move(call))
    {
        m_fake->answer(operation, value);
    }

    std::string call() override { return m_call(m_adapter); }
    AnsweringControl& control() override { return *m_fake; }
    void release() override { m_fake.reset(); }
    bool controlLives() const override { return !m_observed.expired(); }

private:
    std::function<std::string(Adapter&)> m_call;
    std::shared_ptr<Fake> m_fake = std::make_shared<Fake>();
    std::weak_ptr<Fake> m_observed = m_fake;
    Adapter m_adapter{devices::ReacquiringControl<SdkIface>([this] { return sdk::ControlHandle<SdkIface>(m_fake); })};
};

/// How an operation tells of a failure.
enum class Tells {
    Text,   // the error code's text
    Failed, // one value for all
    False,
};

struct Operation
{
    std::string name;
    std::string sdkCall;
    std::string result;
    Tells tells;
    std::string whenAbsent;
    std::function<std::unique_ptr<BridgeStage>()> makeStage;

    std::string resultOf(const std::error_code& error) const
    {
        switch (tells) {
        case Tells::Text:
            return "failed: " + error.message();
        case Tells::Failed:
            return "failed: 0";
        case Tells::False:
            break;
        }
        return "failed";
    }
};

void PrintTo(const Operation& operation, std::ostream* stream)
{
    *stream << operation.name;
}

template <typename Adapter, typename SdkIface, typename Fake>
Operation operation(const std::string& name, const std::string& sdkCall, const std::any& sdkValue,
                    const std::string& result, Tells tells, std::function<std::string(Adapter&)> call)
{
    const std::string whenAbsent = tells == Tells::Text     ? "failed: File memory control is unavailable"
                                   : tells == Tells::Failed ? "failed: 0"
                                                            : "failed";
    const std::string sdkOperation = sdkCall.substr(0, sdkCall.find('('));
    return {name,
            sdkCall,
            result,
            tells,
            whenAbsent,
            [=] {
                return std::make_unique<BridgeStageFor<Adapter, SdkIface, Fake>>(call, sdkOperation, sdkValue); }};
}

Operation ofFiles(const std::string& name, const std::string& sdkCall, const std::any& sdkValue,
                  const std::string& result, std::function<std::string(SdkFileMemoryControl&)> call)
{
    return operation<SdkFileMemoryControl, sdk::service::IFileMemoryControl, FakeFileMemoryControl>(
        name, sdkCall, sdkValue, result, Tells::Text, std::move(call));
}

Operation ofMemory(const std::string& name, const std::string& sdkCall, const std::any& sdkValue,
                   const std::string& result, std::function<std::string(SdkMemoryOperationsControl&)> call)
{
    return operation<SdkMemoryOperationsControl, sdk::service::IMemoryOperationsControl, FakeMemoryOperationsControl>(
        name, sdkCall, sdkValue, result, Tells::Failed, std::move(call));
}

Operation ofPotentiometers(const std::string& name, const std::string& sdkCall, const std::any& sdkValue,
                           const std::string& result, std::function<std::string(SdkPotentiometersControl&)> call)
{
    return operation<SdkPotentiometersControl, sdk::service::IPotentiometersControl, FakePotentiometersControl>(
        name, sdkCall, sdkValue, result, Tells::Failed, std::move(call));
}

Operation ofSerialNumber(const std::string& name, const std::string& sdkCall, const std::any& sdkValue,
                         const std::string& result, std::function<std::string(SdkSerialNumberControl&)> call)
{
    return operation<SdkSerialNumberControl, sdk::service::IMemorySerialNumberControl, FakeMemorySerialNumberControl>(
        name, sdkCall, sdkValue, result, Tells::Failed, std::move(call));
}

using SdkFiles = sdk::service::IFileMemoryControl;

const std::vector<Operation> table = {
    ofFiles("FileList", "fileList()", std::vector<SdkFiles::FileInfo>{{"b", 1, -2}, {"ä", 3, 4}}, "b 1 -2, ä 3 4",
            [](SdkFileMemoryControl& files) {
                return shown(files.fileList(), [](const auto& list) {
                    QStringList lines;
                    for (const auto& file : list)
                        lines.append(QString("%1 %2 %3").arg(file.name).arg(file.word1).arg(file.word2));
                    return lines.join(", ").toStdString();
                });
            }),
    ofFiles("SpaceInfo", "spaceInfo()", SdkFiles::SpaceInfo{1, 2, 0xFFFF'FFFF'FFFF'FFFF}, "1 2 18446744073709551615",
            [](SdkFileMemoryControl& files) {
                return shown(files.spaceInfo(), [](const auto& space) {
                    return QString("%1 %2 %3").arg(space.value1).arg(space.value2).arg(space.value3).toStdString();
                });
            }),
    ofFiles("ReadFile", "readFile(\"\xC3\xA4\", 5, -6)", std::vector<unsigned char>{0, 0xFF, 7}, "00ff07",
            [](SdkFileMemoryControl& files) {
                return shown(files.readFile({"ä", 5, -6}),
                             [](const QByteArray& data) { return data.toHex().toStdString(); });
            }),
    ofFiles("WriteFile", "writeFile(\"\xC3\xA4\", {1, 0, 255})", {}, "done",
            [](SdkFileMemoryControl& files) { return shown(files.writeFile("ä", QByteArray("\x01\x00\xFF", 3))); }),
    ofFiles("DeleteFile", "deleteFile(\"x\", 5, -6)", {}, "done",
            [](SdkFileMemoryControl& files) { return shown(files.deleteFile({"x", 5, -6})); }),
    ofMemory("MemoryRead", "read()", std::vector<std::byte>{std::byte{1}, std::byte{255}}, "2 bytes, 255 last",
             [](SdkMemoryOperationsControl& memory) {
                 return shown(memory.read(), [](const auto& bytes) {
                     return std::to_string(bytes.size()) + " bytes, "
                            + std::to_string(std::to_integer<int>(bytes.back())) + " last";
                 });
             }),
    ofMemory("MemoryWrite", "write({" + ::testing::PrintToString(std::byte{9}) + "})", {}, "done",
             [](SdkMemoryOperationsControl& memory) { return shown(memory.write({std::byte{9}})); }),
    ofMemory("MemoryErase", "erase()", {}, "done",
             [](SdkMemoryOperationsControl& memory) { return shown(memory.erase()); }),
    ofMemory("MemoryIntegrityCheck", "integrityCheck()", {}, "done",
             [](SdkMemoryOperationsControl& memory) { return shown(memory.integrityCheck()); }),
    ofPotentiometers("ReadFromEeprom", "readFromEeprom(18446744073709551615)", -5, "-5",
                     [](SdkPotentiometersControl& potentiometers) {
                         return shown(potentiometers.readFromEeprom(static_cast<std::size_t>(-1)),
                                      [](int value) { return std::to_string(value); });
                     }),
    ofPotentiometers(
        "WriteToRam", "writeToRam(3, -70000)", {}, "done",
        [](SdkPotentiometersControl& potentiometers) { return shown(potentiometers.writeToRam(3, -70000)); }),
    ofPotentiometers(
        "WriteToEeprom", "writeToEeprom(4, 70000)", {}, "done",
        [](SdkPotentiometersControl& potentiometers) { return shown(potentiometers.writeToEeprom(4, 70000)); }),
    ofSerialNumber("SerialNumber", "readSerialNumber()", 777U, "777",
                   [](SdkSerialNumberControl& serialNumber) {
                       return shown(serialNumber.serialNumber(),
                                    [](unsigned int number) { return std::to_string(number); });
                   }),
    ofSerialNumber(
        "WriteSerialNumber", "writeSerialNumber(4294967295)", {}, "done",
        [](SdkSerialNumberControl& serialNumber) { return shown(serialNumber.writeSerialNumber(0xFFFF'FFFF)); }),
    operation<SdkMemoryUsbId, sdk::service::IMemoryUsbIdControl, FakeMemoryUsbIdControl>(
        "WriteUsbId", "writeUsbId(1, 2, 65535)", {}, "done", Tells::False,
        [](SdkMemoryUsbId& usb) { return shown(usb.writeUsbId({1, 2, 65535, "another", 3, 4, 5})); }),
};

class HomeMadeCategory final : public std::error_category
{
public:
    const char* name() const noexcept override { return "home-made"; }
    std::string message(int value) const override { return "trouble № " + std::to_string(value); }
};

const std::error_category& homeMade()
{
    static const HomeMadeCategory category;
    return category;
}

class BridgedOperation : public ::testing::TestWithParam<Operation>
{
protected:
    const Operation& bridged = GetParam();
    std::unique_ptr<BridgeStage> stage = bridged.makeStage();
};

using When = AnsweringControl::When;

} // namespace

TEST_P(BridgedOperation, GivesWhatIsAnsweredAtOnce)
{
    EXPECT_EQ(stage->call(), bridged.result);
    EXPECT_THAT(stage->control().calls(), ElementsAre(bridged.sdkCall));
}

TEST_P(BridgedOperation, GivesWhatIsAnsweredLaterByAnotherThread)
{
    stage->control().when = When::Later;
    EXPECT_EQ(stage->call(), bridged.result);
    EXPECT_THAT(stage->control().calls(), ElementsAre(bridged.sdkCall));
}

TEST_P(BridgedOperation, FailsForEveryNumberBut0OfAnyCategory)
{
    const std::error_code errors[] = {std::make_error_code(std::errc::io_error),
                                      {ENOENT, std::system_category()},
                                      {42, homeMade()},
                                      {-1, homeMade()}};
    for (const When when : {When::AtOnce, When::Later})
        for (const std::error_code& error : errors) {
            stage->control().when = when;
            stage->control().error = error;
            EXPECT_EQ(stage->call(), bridged.resultOf(error)) << error;
        }
}

TEST_P(BridgedOperation, SucceedsForTheNumber0OfAnyCategory)
{
    for (const std::error_category* category : {&homeMade(), &std::generic_category()}) {
        stage->control().error = {0, *category};
        EXPECT_EQ(stage->call(), bridged.result) << category->name();
    }
}

TEST_P(BridgedOperation, FailsWithoutACallWhenTheControlIsAbsent)
{
    const auto journal = std::make_shared<Journal>();
    stage->control().recordInto(journal);
    stage->call();
    stage->release();
    ASSERT_FALSE(stage->controlLives());

    EXPECT_EQ(stage->call(), bridged.whenAbsent);
    EXPECT_THAT(journal->calls(), SizeIs(1)) << "the call before the release";
}

TEST_P(BridgedOperation, PassesOnWhatTheSdkThrowsAndLetsGoOfTheControl)
{
    stage->control().duringCall = [] { throw std::runtime_error("the instrument failed"); };
    EXPECT_THROW(stage->call(), std::runtime_error);
    stage->release();
    EXPECT_FALSE(stage->controlLives());
}

TEST_P(BridgedOperation, CompletesWithTheControlThatIsTakenAwayWhileItWaits)
{
    bool livesWhenItAnswers = false;
    stage->control().when = When::Later;
    stage->control().beforeAnswer = [&] {
        stage->release();
        livesWhenItAnswers = stage->controlLives();
    };

    EXPECT_EQ(stage->call(), bridged.result);
    EXPECT_TRUE(livesWhenItAnswers);
    EXPECT_FALSE(stage->controlLives());
}

TEST_P(BridgedOperation, MakesASecondAnswerFailInTheAnsweringThread)
{
    stage->control().when = When::TwiceByThread;
    EXPECT_EQ(stage->call(), bridged.result);
    EXPECT_EQ(stage->control().secondAnswer, std::make_error_code(std::future_errc::promise_already_satisfied));
}

TEST_P(BridgedOperation, ServesSeveralThreadsAtOnce)
{
    constexpr int threads = 4;
    Rendezvous allWait(threads);
    stage->control().when = When::Later;
    stage->control().beforeAnswer = [&] { allWait.arriveAndWait(); };
    std::atomic<int> right = 0;
    {
        std::vector<std::jthread> callers;
        for (int i = 0; i < threads; ++i)
            callers.emplace_back([&] {
                for (int round = 0; round < 25; ++round)
                    right += stage->call() == bridged.result ? 1 : 0;
            });
    }
    EXPECT_EQ(right, 100);
    EXPECT_THAT(stage->control().calls(), SizeIs(100));
    EXPECT_THAT(stage->control().calls(), Each(bridged.sdkCall));
}

INSTANTIATE_TEST_SUITE_P(, BridgedOperation, ::testing::ValuesIn(table),
                         [](const auto& instance) { return instance.param.name; });

#ifdef __linux__
// A caller whose answer never comes waits without a time limit. In a process of its own, which ends with 42 as
// soon as its main thread sleeps in the kernel on a futex without a time-out, and with 0 when the call returns.
TEST(BridgedOperationDeathTest, WaitsForEverWhenItIsNotAnswered)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto callUnanswered = [] {
        const auto stage = table.front().makeStage();
        stage->control().when = When::Never;
        stage->control().duringCall = [] {
            std::thread([caller = "/proc/self/task/" + std::to_string(getpid()) + "/syscall"] {
                for (;;) {
                    long call = -1;
                    std::string address;
                    std::string operation;
                    std::string value;
                    std::string timeout;
                    std::ifstream(caller) >> call >> address >> operation >> value >> timeout;
                    if (call == SYS_futex && timeout == "0x0")
                        std::_Exit(42);
                }
            }).detach();
        };
        stage->call();
        std::_Exit(0);
    };
    EXPECT_EXIT(callUnanswered(), ::testing::ExitedWithCode(42), "");
}
#endif

} // namespace tov::testing
