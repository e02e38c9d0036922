#include "operations/kind.h"
#include "operations/recorders.h"
#include "operations/shown.h"
#include "operations/valuerows.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/memory/sdkfilememorycontrol.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkmemoryusbid.h"
#include "service/memory/sdkpotentiometerscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/memory/sdksystemtermscontrol.h"
#include "testing/fakecalibrationcontrol.h"
#include "testing/fakecalibrationcontroller.h"
#include "testing/fakefactorycorrectioncontrol.h"
#include "testing/fakefilememorycontrol.h"
#include "testing/fakekz515powercontrol.h"
#include "testing/fakekz515synthesiscontrol.h"
#include "testing/fakeloleakagecontrol.h"
#include "testing/fakememoryoperationscontrol.h"
#include "testing/fakememoryserialnumbercontrol.h"
#include "testing/fakememoryusbidcontrol.h"
#include "testing/fakepotentiometerscontrol.h"
#include "testing/fakesystemtermscontrol.h"
#include "testing/faketemperaturecontrol.h"
#include "testing/fakeulkpowercontrol.h"
#include "testing/fakeulksynthesiscontrol.h"
#include "testing/fakewn0807powermodulecontrol.h"
#include "testing/fakewn0807synthesiscontrol.h"
#include "testing/fakeyqsynthesiscontrol.h"

#include <QDateTime>

#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>

namespace tov::testing {

namespace {

using namespace devices::service;
namespace controls = devices::controls;

constexpr const char* unavailable = "failed: File memory control is unavailable";

// A fake that gives the answers of its kind.
template <typename Fake>
std::shared_ptr<Fake> answering(const std::vector<std::pair<std::string, std::any>>& answers)
{
    auto fake = std::make_shared<Fake>();
    for (const auto& [operation, answer] : answers)
        fake->answer(operation, answer);
    return fake;
}

/// A kind whose control `Fake` stands for, on which an `Adapter` is built.
template <typename Adapter, typename Fake, typename SdkIface, typename Exposed>
class Describing
{
public:
    explicit Describing(const devices::ControlKind<SdkIface, Exposed, Adapter>& kind)
    {
        m_kind.name = kind;
        m_kind.hold = [](const std::any& made) {
            const auto exposed = std::any_cast<std::shared_ptr<Exposed>>(made);
            return held(std::shared_ptr<Adapter>(exposed, static_cast<Adapter*>(exposed.get())));
        };
        if constexpr (std::is_copy_constructible_v<Adapter>) {
            m_kind.copy = [](void* adapter) {
                return held(std::make_shared<Adapter>(std::as_const(*static_cast<Adapter*>(adapter))));
            };
            if constexpr (!std::is_polymorphic_v<Adapter>)
                m_kind.moveOut = [](void* adapter) {
                    return held(std::make_shared<Adapter>(std::move(*static_cast<Adapter*>(adapter))));
                };
        }
    }

    /// An operation of which `answer` is what the SDK answers to its only call.
    Describing& calls(const Row<Adapter>& row)
    {
        m_answers.insert(m_answers.end(), row.sdkAnswers.begin(), row.sdkAnswers.end());
        return calls({row.name, row.sdkCalls, row.whenPresent, row.whenAbsent, erased(row.call)});
    }
    Describing& calls(const Rows<Adapter>& rows)
    {
        for (const Row<Adapter>& row : rows)
            calls(row);
        return *this;
    }
    Describing& calls(Call call)
    {
        m_kind.calls.push_back(std::move(call));
        return *this;
    }

    /// One that is answered by a callback; an absent control is told like a failure.
    Describing& asks(const std::string& sdkCall, const std::any& answer, const std::string& result,
                     const std::string& failure, std::function<std::string(Adapter&)> call)
    {
        const std::string operation = sdkCall.substr(0, sdkCall.find('('));
        if (answer.has_value())
            m_answers.emplace_back(operation, answer);
        return calls({.name = operation,
                      .sdkCalls = {sdkCall},
                      .whenPresent = result,
                      .whenAbsent = failure,
                      .call = erased(std::move(call)),
                      .whenFailed = failure,
                      .tellsErrorText = failure == unavailable});
    }
    Describing& answers(const std::string& operation, const std::any& answer)
    {
        m_answers.emplace_back(operation, answer);
        return *this;
    }

    /// How the control tells its observers, and what observers of the application are told then.
    template <typename Observer>
    Describing& observed(Observing observing, std::function<void(Observer&, const Notification&)> tell,
                         std::function<std::string(const Notification&)> told)
    {
        m_kind.observing = observing;
        m_kind.told = std::move(told);
        m_watch = [tell](Fake& fake, Offered& offered) {
            if constexpr (requires { fake.observers(); }) {
                offered.registrations = [&fake] { return fake.observers().size(); };
                offered.notify = [&fake, tell, removed = std::make_shared<decltype(fake.observers())>()](
                                     const Notification& notification) {
                    static const bool tellsRemoved = isSeeded("tells-removed-observers");
                    if (removed->empty() || !tellsRemoved)
                        *removed = fake.observers();
                    for (auto* observer : *removed)
                        tell(*observer, notification);
                };
            }
        };
        return *this;
    }

    /// Who observes the adapter: registered with it, or told by signals of what `Recorder` is made from.
    template <typename Recorder>
    Describing& observers()
    {
        m_kind.makeObserver = [](void* adapter, Told& told, int number) -> std::shared_ptr<void> {
            if constexpr (std::is_constructible_v<Recorder, Adapter&, Told&, int>)
                return std::make_shared<Recorder>(*static_cast<Adapter*>(adapter), told, number);
            else
                return std::make_shared<Recorder>(told, number);
        };
        if constexpr (requires(Adapter& adapter, Recorder* recorder) { adapter.addObserver(recorder); }) {
            m_kind.add = [](void* adapter, void* observer) {
                static_cast<Adapter*>(adapter)->addObserver(static_cast<Recorder*>(observer));
            };
            m_kind.remove = [](void* adapter, void* observer) {
                static_cast<Adapter*>(adapter)->removeObserver(static_cast<Recorder*>(observer));
            };
        }
        return *this;
    }

    Kind described() const
    {
        Kind kind = m_kind;
        kind.offer = [answers = m_answers, watch = m_watch] {
            const auto fake = answering<Fake>(answers);
            Offered offered{.control = fake, .recording = fake.get()};
            if constexpr (std::is_base_of_v<AnsweringControl, Fake>)
                offered.answering = fake.get();
            if constexpr (std::is_same_v<Fake, FakeTemperatureControl>)
                offered.setTemperature = [control = fake.get()](float temperature) {
                    control->answer("temperature", temperature);
                    control->modules = {{"b", temperature}, {"a", temperature + 1}};
                };
            if constexpr (std::is_same_v<Fake, FakeFileMemoryControl>)
                offered.setAvailable = [control = fake.get()](bool available) { control->available = available; };
            if (watch)
                watch(*fake, offered);
            return std::pair(std::shared_ptr<void>(std::shared_ptr<SdkIface>(fake)), offered);
        };
        return kind;
    }

private:
    static Held held(std::shared_ptr<Adapter> adapter)
    {
        devices::IControlLifecycleObserver* lifecycle = nullptr;
        if constexpr (std::is_base_of_v<devices::IControlLifecycleObserver, Adapter>)
            lifecycle = adapter.get();
        return {std::move(adapter), lifecycle};
    }

    static std::function<std::string(void*)> erased(std::function<std::string(Adapter&)> call)
    {
        return [call = std::move(call)](void* adapter) { return call(*static_cast<Adapter*>(adapter)); };
    }

    Kind m_kind;
    std::vector<std::pair<std::string, std::any>> m_answers;
    std::function<void(Fake&, Offered&)> m_watch;
};

template <typename Fake, typename SdkIface, typename Exposed, typename Adapter>
Describing<Adapter, Fake, SdkIface, Exposed> describe(const devices::ControlKind<SdkIface, Exposed, Adapter>& kind)
{
    return Describing<Adapter, Fake, SdkIface, Exposed>(kind);
}

std::string numbers(const char* what, unsigned int first, unsigned int second)
{
    return what + (" " + std::to_string(first)) + " " + std::to_string(second);
}

Kind fileMemory()
{
    using Sdk = sdk::service::IFileMemoryControl;
    return describe<FakeFileMemoryControl>(controls::fileMemory)
        .asks("fileList()", std::vector<Sdk::FileInfo>{{"b", 1, -2}, {"\xC3\xA4", 3, 4}},
              "b1-2 \xC3\xA4"
              "34 ",
              unavailable,
              [](SdkFileMemoryControl& files) {
                  return shown(files.fileList(), [](const auto& list) {
                      std::string text;
                      for (const auto& file : list)
                          text +=
                              file.name.toStdString() + std::to_string(file.word1) + std::to_string(file.word2) + " ";
                      return text;
                  });
              })
        .asks("spaceInfo()", Sdk::SpaceInfo{1, 2, 3}, "1 2 3", unavailable,
              [](SdkFileMemoryControl& files) {
                  return shown(files.spaceInfo(), [](const auto& space) {
                      return std::to_string(space.value1) + " " + std::to_string(space.value2) + " "
                             + std::to_string(space.value3);
                  });
              })
        .asks("readFile(\"x\", 5, -6)", std::vector<unsigned char>{0, 0xFF, 7}, "00ff07", unavailable,
              [](SdkFileMemoryControl& files) {
                  return shown(files.readFile({"x", 5, -6}),
                               [](const QByteArray& data) { return data.toHex().toStdString(); });
              })
        .asks("writeFile(\"x\", {1, 0})", {}, "done", unavailable,
              [](SdkFileMemoryControl& files) { return shown(files.writeFile("x", QByteArray("\x01\x00", 2))); })
        .asks("deleteFile(\"x\", 5, -6)", {}, "done", unavailable,
              [](SdkFileMemoryControl& files) { return shown(files.deleteFile({"x", 5, -6})); })
        .described();
}

Kind potentiometers()
{
    using Sdk = sdk::service::IPotentiometersControl;
    const auto list = [](const SdkPotentiometersControl& control) {
        std::string text;
        for (const auto& each : control.potentiometers())
            text += each.name + std::to_string(each.word1) + std::to_string(each.word2) + " ";
        return text;
    };
    return describe<FakePotentiometersControl>(controls::potentiometers)
        .calls(readsBy<SdkPotentiometersControl>("potentiometers", list, std::string(),
                                                 SdkAnswers{std::vector<Sdk::PotentiometerInfo>{{"p", 1, -2}}},
                                                 std::string("p1-2 ")))
        .asks("readFromEeprom(7)", -5, "-5", "failed: 0",
              [](SdkPotentiometersControl& control) {
                  return shown(control.readFromEeprom(7), [](int value) { return std::to_string(value); });
              })
        .asks("writeToRam(3, -70000)", {}, "done", "failed: 0",
              [](SdkPotentiometersControl& control) { return shown(control.writeToRam(3, -70000)); })
        .asks("writeToEeprom(4, 70000)", {}, "done", "failed: 0",
              [](SdkPotentiometersControl& control) { return shown(control.writeToEeprom(4, 70000)); })
        .described();
}

Kind usbId()
{
    using Sdk = sdk::service::IMemoryUsbIdControl;
    const auto show = [](const IUsbIdControl::UsbId& id) {
        return std::to_string(id.id1) + " " + std::to_string(id.id2) + " " + std::to_string(id.id3) + " "
               + std::to_string(id.tag) + " " + std::to_string(id.data1) + " " + std::to_string(id.data2);
    };
    const Sdk::UsbId known{.id1 = 1, .id2 = 2, .id3 = 3, .model = {}, .tag = 4, .data1 = 5, .data2 = 6};
    return describe<FakeMemoryUsbIdControl>(controls::usbId)
        .answers("usbId", known)
        .answers("usbIds", std::vector{known, known})
        .calls({"usbId",
                {"usbId()"},
                "1 2 3 4 5 6",
                "0 0 0 1 0 0",
                [show](void* control) { return show(static_cast<SdkMemoryUsbId*>(control)->usbId()); }})
        .calls({"usbIds",
                {"usbIds()"},
                "1 2 3 4 5 6;1 2 3 4 5 6;",
                "",
                [show](void* control) {
                    std::string text;
                    for (const auto& each : static_cast<SdkMemoryUsbId*>(control)->usbIds())
                        text += show(each) + ";";
                    return text;
                }})
        .asks("writeUsbId(1, 2, 65535)", {}, "done", "failed",
              [](SdkMemoryUsbId& usb) {
                  return usb.writeUsbId({1, 2, 65535, "another", 3, 4, 5}) ? std::string("done") : "failed";
              })
        .described();
}

Kind serialNumber()
{
    using Sdk = sdk::service::IMemorySerialNumberControl;
    return describe<FakeMemorySerialNumberControl>(controls::serialNumber)
        .asks("readSerialNumber()", 777U, "777", "failed: 0",
              [](SdkSerialNumberControl& control) {
                  return shown(control.serialNumber(), [](unsigned int number) { return std::to_string(number); });
              })
        .asks("writeSerialNumber(5)", {}, "done", "failed: 0",
              [](SdkSerialNumberControl& control) { return shown(control.writeSerialNumber(5)); })
        .observed<Sdk::Observer>(
            Observing::List,
            [](Sdk::Observer& observer, const Notification& n) { observer.onSerialNumberEvent(n.a, n.b); },
            [](const Notification& n) { return numbers("serial", n.b, n.a); })
        .observers<SerialNumberRecorder>()
        .described();
}

Kind memoryOperations()
{
    using Sdk = sdk::service::IMemoryOperationsControl;
    return describe<FakeMemoryOperationsControl>(controls::memoryOperations)
        .asks("read()", std::vector<std::byte>{std::byte{1}, std::byte{255}}, "2 bytes", "failed: 0",
              [](SdkMemoryOperationsControl& memory) {
                  return shown(memory.read(),
                               [](const auto& bytes) { return std::to_string(bytes.size()) + " bytes"; });
              })
        .asks("write({})", {}, "done", "failed: 0",
              [](SdkMemoryOperationsControl& memory) { return shown(memory.write({})); })
        .asks("erase()", {}, "done", "failed: 0",
              [](SdkMemoryOperationsControl& memory) { return shown(memory.erase()); })
        .asks("integrityCheck()", {}, "done", "failed: 0",
              [](SdkMemoryOperationsControl& memory) { return shown(memory.integrityCheck()); })
        .observed<Sdk::IObserver>(
            Observing::List,
            [](Sdk::IObserver& observer, const Notification& n) {
                constexpr std::array notifications{&Sdk::IObserver::onNotification1, &Sdk::IObserver::onNotification2,
                                                   &Sdk::IObserver::onNotification3, &Sdk::IObserver::onNotification4};
                (observer.*notifications.at(n.which % 4))(n.a, n.b);
            },
            [](const Notification& n) {
                constexpr std::array becomes{"3", "4", "2", "1"};
                return numbers(becomes.at(n.which % 4), n.b, n.a);
            })
        .observers<MemoryRecorder>()
        .described();
}

Kind systemTerms()
{
    using Sdk = sdk::service::ISystemTermsControl;
    const QDateTime time = QDateTime::fromSecsSinceEpoch(1000);
    return describe<FakeSystemTermsControl>(controls::systemTerms)
        .answers("termsRecords", std::vector<Sdk::TermsRecord>{{1, 0.5, -5}})
        .answers("systemTermsFlag", true)
        .calls({"termsRecords",
                {"termsRecords()"},
                "1 -5;",
                "",
                [](void* control) {
                    std::string text;
                    for (const auto& record : static_cast<SdkSystemTermsControl*>(control)->termsRecords())
                        text += std::to_string(record.key) + " " + std::to_string(record.number) + ";";
                    return text;
                }})
        .calls({"writeSystemTerms with records",
                {"writeSystemTerms with records(1000, 0.5)"},
                "done",
                "done",
                [time](void* control) {
                    static_cast<SdkSystemTermsControl*>(control)->writeSystemTerms(time, 0.5, {{1, 2.0, 3}}, {});
                    return "done";
                }})
        .calls({"writeSystemTerms with no record",
                {},
                "done",
                "done",
                [time](void* control) {
                    static_cast<SdkSystemTermsControl*>(control)->writeSystemTerms(time, 0.5, {}, {});
                    return "done";
                }})
        .calls({"writeSystemTerms",
                {"writeSystemTerms(1000, 0.5)"},
                "done",
                "done",
                [time](void* control) {
                    static_cast<SdkSystemTermsControl*>(control)->writeSystemTerms(time, 0.5, vna::ErrorTerms());
                    return "done";
                }})
        .calls({"systemTermsFlag",
                {"systemTermsFlag()"},
                "true",
                "false",
                [](void* control) {
                    return static_cast<SdkSystemTermsControl*>(control)->systemTermsFlag() ? "true" : "false";
                }})
        .observed<Sdk::Observer>(
            Observing::List,
            [](Sdk::Observer& observer, const Notification& n) {
                switch (n.which % 4) {
                case 0:
                    return observer.onTermsNotice();
                case 1:
                    return observer.onTermsValue(n.a);
                case 2:
                    return observer.onTermsSecondNotice();
                default:
                    return observer.onTermsStatus(static_cast<int>(n.b % 16) - 3);
                }
            },
            [](const Notification& n) -> std::string {
                switch (n.which % 4) {
                case 0:
                    return "notice";
                case 1:
                    return "value " + std::to_string(n.a);
                case 2:
                    return "second notice";
                default: {
                    const int status = static_cast<int>(n.b % 16) - 3;
                    return "status " + std::to_string(status >= 1 && status <= 9 ? status : 0);
                }
                }
            })
        .observers<TermsRecorder>()
        .described();
}

template <typename Fake, typename Adapter, typename SdkIface>
Kind calibration(const devices::ControlKind<SdkIface, Adapter>& kind, const Call& save)
{
    using Observer = typename SdkIface::Observer;
    return describe<Fake>(kind)
        .answers("frequencyPlan", sdk::FrequencyPlan{.segments = {{1.0, 2.0, -3}, {4.0, 5.0, 6}}})
        .calls({"frequencyPlan",
                {"frequencyPlan()"},
                "-3 6 ",
                "",
                [](void* control) {
                    std::string text;
                    for (const auto& segment : static_cast<Adapter*>(control)->frequencyPlan().segments)
                        text += std::to_string(segment.points) + " ";
                    return text;
                }})
        .calls(save)
        .template observed<Observer>(
            Observing::Table,
            [](Observer& observer, const Notification& n) {
                switch (n.which % 4) {
                case 0:
                    return observer.onFirstEvent();
                case 1:
                    return observer.onSecondEvent();
                case 2:
                    return observer.onThirdEvent();
                default:
                    return observer.onStateChanged(static_cast<int>(n.b % 8) - 2);
                }
            },
            [](const Notification& n) -> std::string {
                constexpr std::array events{"first", "second", "third"};
                if (n.which % 4 < 3)
                    return events.at(n.which % 4);
                const int state = static_cast<int>(n.b % 8) - 2;
                return "state " + std::to_string(state >= 0 && state <= 3 ? state : 0);
            })
        .template observers<CalibrationRecorder<Adapter>>()
        .described();
}

Kind factoryCorrections()
{
    using Sdk = sdk::IFactoryCorrectionControl;
    using devices::FactoryCorrection;
    const auto asks = [](const char* name, const char* sdkCall,
                         bool (SdkFactoryCorrectionControl::*query)(FactoryCorrection) const,
                         FactoryCorrection correction, const char* answer) {
        return Call{name, {sdkCall}, answer, "false", [=](void* control) {
                        return (static_cast<SdkFactoryCorrectionControl*>(control)->*query)(correction) ? "true"
                                                                                                        : "false";
                    }};
    };
    const auto sets = [](FactoryCorrection correction, std::vector<std::string> sdkCalls) {
        return Call{"setEnabled", std::move(sdkCalls), "done", "done", [=](void* control) {
                        static_cast<SdkFactoryCorrectionControl*>(control)->setEnabled(correction, true);
                        return "done";
                    }};
    };
    return describe<FakeFactoryCorrectionControl>(controls::factoryCorrections)
        .answers("supportedCorrections", std::uint16_t{0x8015})
        .answers("validCorrections", std::uint16_t{0x0005})
        .answers("enabledCorrections", std::uint16_t{0x0004})
        .answers("modifiableCorrections", std::uint16_t{0x8001})
        .calls({"supported",
                {"supportedCorrections()"},
                "0 2 9 ",
                "",
                [](void* control) {
                    std::string text;
                    for (const auto correction : static_cast<SdkFactoryCorrectionControl*>(control)->supported())
                        text += std::to_string(static_cast<int>(correction)) + " ";
                    return text;
                }})
        .calls(asks("isValid", "validCorrections()", &SdkFactoryCorrectionControl::isValid,
                    FactoryCorrection::Correction3, "true"))
        .calls(asks("isEnabled", "enabledCorrections()", &SdkFactoryCorrectionControl::isEnabled,
                    FactoryCorrection::Correction3, "true"))
        .calls(asks("isModifiable", "modifiableCorrections()", &SdkFactoryCorrectionControl::isModifiable,
                    FactoryCorrection::Correction3, "false"))
        .calls(sets(FactoryCorrection::Correction1,
                    {"validCorrections()", "modifiableCorrections()", "setEnabled(1, true)"}))
        .calls(sets(FactoryCorrection::Correction3, {"validCorrections()", "modifiableCorrections()"}))
        .calls(sets(FactoryCorrection::Correction2, {"validCorrections()"}))
        .observed<Sdk::IObserver>(
            Observing::Corrections,
            [](Sdk::IObserver& observer, const Notification& n) {
                switch (n.which % 3) {
                case 0:
                    return observer.onCorrectionsChanged();
                case 1:
                    return observer.onCorrectionStatesChanged();
                default:
                    return observer.onEnabledChanged(static_cast<sdk::CorrectionFlag>(1U << (n.a % 16)), n.b % 2 != 0);
                }
            },
            [](const Notification& n) -> std::string {
                if (n.which % 3 < 2)
                    return n.which % 3 == 0 ? "changed" : "states";
                const auto known = devices::fromSdkCorrection(static_cast<sdk::CorrectionFlag>(1U << (n.a % 16)));
                return known ? numbers("enabled", static_cast<unsigned int>(*known), n.b % 2) : "";
            })
        .observers<CorrectionsRecorder>()
        .described();
}

Kind temperature()
{
    Call readings;
    readings.name = "temperatures";
    readings.readsSnapshot = true;
    readings.call = [](void* control) {
        const auto& adapter = *static_cast<SdkTemperatureControl*>(control);
        std::string text = exactly(adapter.temperature());
        for (const auto& module : adapter.modulesTemperature())
            text += " " + module.name.toStdString() + exactly(module.temperature);
        return text;
    };
    return describe<FakeTemperatureControl>(controls::temperature)
        .calls(readings)
        .observed<sdk::ITemperatureControl::Observer>(
            Observing::Temperature,
            [](sdk::ITemperatureControl::Observer& observer, const Notification&) { observer.onTemperatureChanged(); },
            [](const Notification&) { return "changed"; })
        .observers<TemperatureRecorder>()
        .described();
}

Kind calibrationController(const auto& kind)
{
    using Sdk = sdk::service::calibrations::ICalibrationController;
    return describe<FakeCalibrationController>(kind)
        .calls({"lock",
                {},
                "there",
                "absent",
                [](void* control) {
                    return static_cast<SdkCalibrationControlHandle*>(control)->lock() ? "there" : "absent";
                }})
        .template observed<Sdk::Observer>(
            Observing::Controller,
            [](Sdk::Observer& observer, const Notification& n) {
                switch (n.which % 3) {
                case 0:
                    return observer.onUnitStatusChanged();
                case 1:
                    return observer.onConfigurationChanged();
                default:
                    return observer.onSaveProgress(7, {n.a, n.b % 4});
                }
            },
            [](const Notification& n) -> std::string {
                if (n.which % 3 < 2)
                    return n.which % 3 == 0 ? "unit" : "configuration";
                return "progress " + std::to_string(n.b % 4 == 0 ? 0 : n.a * 100 / (n.b % 4));
            })
        .template observers<WatcherRecorder>()
        .described();
}

template <typename Fake>
Kind valueAdapter(const auto& kind, const auto& rows)
{
    return describe<Fake>(kind).calls(rows).described();
}

} // namespace

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all = {
        fileMemory(),
        potentiometers(),
        usbId(),
        serialNumber(),
        memoryOperations(),
        valueAdapter<FakeUlkSynthesisControl>(controls::ulkSynthesis, ulkSynthesisRows()),
        valueAdapter<FakeUlkPowerControl>(controls::ulkPower, ulkPowerRows()),
        valueAdapter<FakeWn0807SynthesisControl>(controls::wn0807Synthesis, wn0807SynthesisRows()),
        valueAdapter<FakeWn0807PowerModuleControl>(controls::wn0807Power, wn0807PowerRows()),
        valueAdapter<FakeLoLeakageControl>(controls::loLeakage, loLeakageRows()),
        valueAdapter<FakeKz515PowerControl>(controls::kz515Power, kz515PowerRows()),
        valueAdapter<FakeKz515SynthesisControl>(controls::kz515Synthesis, kz515SynthesisRows()),
        valueAdapter<FakeYqSynthesisControl>(controls::yqSynthesis, yqSynthesisRows()),
        systemTerms(),
        calibration<FakeYqIfswCalibrationControl>(
            controls::ifswCalibration, {"saveCalibrationData",
                                        {"saveCalibrationData()"},
                                        "done",
                                        "done",
                                        [](void* control) {
                                            static_cast<SdkYqIfswCalibrationControl*>(control)->saveCalibrationData(
                                                {{1.0}, {}});
                                            return "done";
                                        }}),
        calibration<FakeYqFactoryPowerCalibrationControl>(
            controls::factoryPowerCalibration,
            {"saveCalibrationData",
             {"saveCalibrationData(1000, 0.5)"},
             "done",
             "done",
             [](void* control) {
                 static_cast<SdkYqFactoryPowerCalibrationControl*>(control)->saveCalibrationData(
                     std::chrono::sys_seconds(std::chrono::seconds(1000)), 0.5, {{}, {}});
                 return "done";
             }}),
        factoryCorrections(),
        temperature(),
        calibrationController(controls::calibrationController1),
        calibrationController(controls::calibrationController2),
    };
    return all;
}

bool isSeeded(const char* bug)
{
    const char* const seeded = std::getenv("SEEDED_BUG");
    return seeded != nullptr && std::strcmp(seeded, bug) == 0;
}

} // namespace tov::testing
