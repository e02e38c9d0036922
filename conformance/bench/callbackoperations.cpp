#include "conformance/bench/callbackoperations.h"

#include "sdk/service/ifilememorycontrol.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/imemoryusbidcontrol.h"
#include "sdk/service/ipotentiometerscontrol.h"

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <optional>
#include <utility>

namespace tov::conformance {

namespace controls = devices::controls;
using namespace sdk::service;
using Effect = CallbackOperation::Effect;

namespace {

/// A callback of whatever value, which is not looked at.
struct Telling
{
    Answered answered;

    template <typename Value>
    void operator()(const Value& /*value*/, std::error_code error) const
    {
        answered(error);
    }
    void operator()(std::error_code error) const { answered(error); }
};

CallbackOperation telling(CallbackOperation operation)
{
    operation.tells = true;
    return operation;
}

template <typename SdkIface, typename... Types, typename Prepare>
CallbackOperation operation(const devices::ControlKind<SdkIface, Types...>& kind, const char* name, Effect effect,
                            Prepare prepare)
{
    return {.control = kind,
            .name = name,
            .effect = effect,
            .prepare = [prepare](Bench& bench, const std::shared_ptr<void>& control) {
                return prepare(bench, std::static_pointer_cast<SdkIface>(control));
            }};
}

// One that needs nothing but the callback.
template <typename SdkIface, typename... Types, typename Callback>
CallbackOperation reading(const devices::ControlKind<SdkIface, Types...>& kind, const char* name,
                          void (SdkIface::*function)(Callback))
{
    return operation(kind, name, Effect::Reads, [function](Bench& /*bench*/, const std::shared_ptr<SdkIface>& control) {
        return Call{.make = [=](const Answered& answered) { ((*control).*function)(Telling{answered}); },
                    .restore = nullptr};
    });
}

// The value that a call answers with, to prepare another one.
template <typename Value, typename Make>
Value valueOf(const Bench& bench, const std::string& name, Make make)
{
    struct Slot
    {
        std::mutex mutex; // guards all below
        std::optional<Value> value;
    };
    const auto slot = std::make_shared<Slot>();
    const std::error_code error = answerOf(bench, name, [&](const Answered& answered) {
        make([slot, answered](Value value, std::error_code failure) {
            {
                const std::lock_guard guard(slot->mutex);
                slot->value = std::move(value);
            }
            answered(failure);
        });
    });
    if (error)
        throw NotApplicable("answers with an error: " + error.message(), name);
    const std::lock_guard guard(slot->mutex);
    return slot->value.value_or(Value());
}

using FileInfo = IFileMemoryControl::FileInfo;
using Files = std::shared_ptr<IFileMemoryControl>;

const std::string ownFile = "conformance.tmp";

std::optional<FileInfo> findFile(const Bench& bench, const Files& files, const std::string& name)
{
    const auto list = valueOf<std::vector<FileInfo>>(bench, named(controls::fileMemory, "fileList"),
                                                     [&](auto answer) { files->fileList(std::move(answer)); });
    const auto found =
        std::ranges::find_if(list, [&](const FileInfo& file) { return name.empty() || file.name == name; });
    return found != list.end() ? std::optional(*found) : std::nullopt;
}

void writeOwnFile(const Files& files, const Answered& answered)
{
    files->writeFile(ownFile, {'s', 'p', 'a', 'r', 'e'}, answered);
}

void deleteOwnFile(const Bench& bench, const Files& files)
{
    const auto own = findFile(bench, files, ownFile);
    if (!own)
        return;
    if (const auto error = answerOf(bench, named(controls::fileMemory, "deleteFile"),
                                    [&](const Answered& answered) { files->deleteFile(*own, answered); }))
        throw Finding("the file " + ownFile + " was written and cannot be deleted: " + error.message());
}

Call fileWritten(Bench& bench, const Files& files)
{
    if (findFile(bench, files, ownFile))
        throw NotApplicable("there is a file " + ownFile + " already", "file-memory");
    return {.make = [=](const Answered& answered) { writeOwnFile(files, answered); },
            .restore = [&bench, files] { deleteOwnFile(bench, files); }};
}

// A file of our own, and the call that wrote it.
std::pair<FileInfo, Call> spareFile(Bench& bench, const Files& files)
{
    const Call written = fileWritten(bench, files);
    if (const auto error = answerOf(bench, named(controls::fileMemory, "writeFile"), written.make)) {
        written.restore();
        throw NotApplicable("answers with an error: " + error.message(), "file-memory writeFile()");
    }
    const auto own = findFile(bench, files, ownFile);
    if (!own)
        throw NotApplicable("the file that was written is not listed", "file-memory");
    return {*own, written};
}

Call fileRead(Bench& bench, const Files& files)
{
    const auto readsFrom = [=](const FileInfo& file) {
        return [=](const Answered& answered) { files->readFile(file, Telling{answered}); };
    };
    if (const auto file = findFile(bench, files, {}))
        return {.make = readsFrom(*file), .restore = nullptr};
    if (!bench.settings().mayWrite)
        throw NotAllowed("there is no file; to write one takes --allow-write", "file-memory readFile()");
    const auto [own, written] = spareFile(bench, files);
    return {.make = readsFrom(own), .restore = written.restore};
}

// Deletes a file again and again, so all but the first answer with an error.
Call fileDeleted(Bench& bench, const Files& files)
{
    const auto [own, written] = spareFile(bench, files);
    return {.make = [=, file = own](const Answered& answered) { files->deleteFile(file, answered); },
            .restore = written.restore};
}

using Memory = std::shared_ptr<IMemoryOperationsControl>;
using Bytes = std::vector<std::byte>;

Call memoryWritten(Bench& bench, const Memory& memory)
{
    const auto content = valueOf<Bytes>(bench, named(controls::memoryOperations, "read"),
                                        [&](auto answer) { memory->read(std::move(answer)); });
    if (content.empty())
        throw NotApplicable("reads nothing that could be written again", "memory-operations");
    return {.make = [=](const Answered& answered) { memory->write(content, answered); }, .restore = nullptr};
}

Call memoryErased(Bench& bench, const Memory& memory)
{
    constexpr int patiently = 60; // it comes after what may have taken long
    const Call written = memoryWritten(bench, memory);
    return {.make = [=](const Answered& answered) { memory->erase(answered); },
            .restore =
                [&bench, written] {
                    const std::string name = named(controls::memoryOperations, "write");
                    if (const auto error = answerOf(bench, name + ", which restores", written.make, patiently))
                        throw Finding("the memory is erased: " + error.message());
                }};
}

using Potentiometers = std::shared_ptr<IPotentiometersControl>;

Call potentiometerRead(Bench& /*bench*/, const Potentiometers& potentiometers)
{
    if (potentiometers->potentiometers().empty())
        throw NotApplicable("there are none", "potentiometers");
    return {.make = [=](const Answered& answered) { potentiometers->readFromEeprom(0, Telling{answered}); },
            .restore = nullptr};
}

Call potentiometerWritten(Bench& bench, const Potentiometers& potentiometers)
{
    potentiometerRead(bench, potentiometers);
    const int value = valueOf<int>(bench, named(controls::potentiometers, "readFromEeprom"),
                                   [&](auto answer) { potentiometers->readFromEeprom(0, std::move(answer)); });
    return {.make = [=](const Answered& answered) { potentiometers->writeToEeprom(0, value, answered); },
            .restore = nullptr};
}

Call serialNumberWritten(Bench& bench, const std::shared_ptr<IMemorySerialNumberControl>& memory)
{
    const auto number = valueOf<unsigned int>(bench, named(controls::serialNumber, "readSerialNumber"),
                                              [&](auto answer) { memory->readSerialNumber(std::move(answer)); });
    return {.make = [=](const Answered& answered) { memory->writeSerialNumber(number, answered); }, .restore = nullptr};
}

Call usbIdWritten(Bench& /*bench*/, const std::shared_ptr<IMemoryUsbIdControl>& memory)
{
    const auto id = memory->usbId();
    const IMemoryUsbIdControl::UsbIdWords words{.id1 = id.id1, .id2 = id.id2, .id3 = id.id3};
    return {.make = [=](const Answered& answered) { memory->writeUsbId(words, answered); }, .restore = nullptr};
}

// What is called to prepare a call may throw, as every operation may.
Call prepared(Bench& bench, const CallbackOperation& operation, const std::shared_ptr<void>& control)
try {
    return operation.prepare(bench, control);
} catch (const NotLookedAt&) {
    throw;
} catch (const Finding&) {
    throw;
} catch (const std::exception& error) {
    throw NotApplicable(std::string("throws: ") + error.what(), named(operation.control, operation.name));
}

// That it could not be restored is to be known whatever else went wrong.
void restore(const Call& call, const std::string& name, const std::string& before)
{
    if (!call.restore)
        return;
    try {
        call.restore();
    } catch (const std::exception& error) {
        throw Finding(before + "what " + name + " changed cannot be restored: " + error.what());
    }
}

void workWith(const Call& call, const std::string& name, const std::function<void()>& work)
{
    try {
        work();
    } catch (const Finding& finding) {
        restore(call, name, std::string(finding.what()) + "; and ");
        throw;
    } catch (...) {
        restore(call, name, {});
        throw;
    }
    restore(call, name, {});
}

} // namespace

const std::vector<CallbackOperation>& callbackOperations()
{
    static const std::vector<CallbackOperation> all{
        reading(controls::fileMemory, "fileList", &IFileMemoryControl::fileList),
        reading(controls::fileMemory, "spaceInfo", &IFileMemoryControl::spaceInfo),
        operation(controls::fileMemory, "readFile", Effect::Reads, &fileRead),
        operation(controls::fileMemory, "writeFile", Effect::Writes, &fileWritten),
        operation(controls::fileMemory, "deleteFile", Effect::Writes, &fileDeleted),
        reading(controls::memoryOperations, "read", &IMemoryOperationsControl::read),
        operation(controls::memoryOperations, "write", Effect::Writes, &memoryWritten),
        operation(controls::memoryOperations, "erase", Effect::Erases, &memoryErased),
        telling(reading(controls::memoryOperations, "integrityCheck", &IMemoryOperationsControl::integrityCheck)),
        operation(controls::potentiometers, "readFromEeprom", Effect::Reads, &potentiometerRead),
        operation(controls::potentiometers, "writeToEeprom", Effect::Writes, &potentiometerWritten),
        reading(controls::serialNumber, "readSerialNumber", &IMemorySerialNumberControl::readSerialNumber),
        telling(operation(controls::serialNumber, "writeSerialNumber", Effect::Writes, &serialNumberWritten)),
        operation(controls::usbId, "writeUsbId", Effect::Writes, &usbIdWritten),
    };
    return all;
}

void beAllowed(const Bench& bench, const CallbackOperation& operation)
{
    const Settings& settings = bench.settings();
    const std::string name = named(operation.control, operation.name);
    if (operation.effect != Effect::Reads && !settings.mayWrite)
        throw NotAllowed(
            operation.effect == Effect::Erases ? "takes --allow-write and --allow-erase" : "takes --allow-write", name);
    if (operation.effect == Effect::Erases && !settings.mayErase)
        throw NotAllowed("takes --allow-erase", name);
}

bool everyOperation(const CallbackOperation& /*operation*/)
{
    return true;
}

bool onlyReads(const CallbackOperation& operation)
{
    return operation.effect == Effect::Reads;
}

bool ofTheFileMemory(const CallbackOperation& operation)
{
    return operation.control == controls::fileMemory;
}

Seen forEachOperation(Bench& bench, const Which& which,
                      const std::function<void(const CallbackOperation&, const std::string&, const Call&)>& work)
{
    Tally tally;
    bool isNext = bench.settings().after.empty();
    for (const devices::ControlName& control : bench.offered())
        for (const CallbackOperation& operation : callbackOperations()) {
            if (operation.control != control || !which(operation))
                continue;
            const std::string name = named(control, operation.name);
            if (!std::exchange(isNext, isNext || name == bench.settings().after))
                continue;
            tally.attempt({}, [&] {
                beAllowed(bench, operation);
                const auto found = bench.held(control);
                bench.begin(name);
                const Call call = prepared(bench, operation, found);
                workWith(call, name, [&] { work(operation, name, call); });
                tally.looked(name);
            });
        }
    return tally.seen();
}

Answering::Answering(Bench& bench, const CallbackOperation& operation, Bench::Answer answer)
    : m_bench(bench)
    , m_operation(operation)
{
    m_bench.setAnswer(operation.control, operation.name, answer);
}

std::unique_ptr<Answering> answeringIfItCan(Bench& bench, const CallbackOperation& operation, Bench::Answer answer)
try {
    return std::make_unique<Answering>(bench, operation, answer);
} catch (const NotApplicable&) {
    return nullptr;
}

Answering::~Answering()
try {
    m_bench.setAnswer(m_operation.control, m_operation.name, Bench::Answer::AsUsual);
} catch (const NotApplicable&) {
    return; // who could do the one thing can do the other, or is broken anyway
}

} // namespace tov::conformance
