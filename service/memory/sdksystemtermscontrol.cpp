#include "service/memory/sdksystemtermscontrol.h"

#include "devices/errortermstosdk.h"
#include "service/support/callforwarding.h"
#include "service/support/convertlist.h"
#include "service/support/enumerationmap.h"
#include "service/support/observerlist.h"

namespace tov::devices::service {

namespace {

using ISdkControl = sdk::service::ISystemTermsControl;

ISystemTermsControl::TermsRecord fromSdk(const ISdkControl::TermsRecord& record)
{
    return {record.key, record.value, record.number};
}

std::vector<ISdkControl::TermsRecord> toSdk(const std::vector<ISystemTermsControl::TermsRecord>& records)
{
    return convertList(records, [](const ISystemTermsControl::TermsRecord& record) {
        return ISdkControl::TermsRecord{record.key, record.value, static_cast<std::int32_t>(record.number)};
    });
}

constexpr auto statuses = sameNumbers<10>(ISystemTermsControl::Status::Status0);

} // namespace

class SdkSystemTermsControl::Listener final : public ISdkControl::Observer
{
public:
    void onTermsNotice() override { observers.notifyCopy(&Observer::onTermsNotice); }
    void onTermsValue(unsigned int value) override { observers.notifyCopy(&Observer::onTermsValue, value); }
    void onTermsSecondNotice() override { observers.notifyCopy(&Observer::onTermsSecondNotice); }
    void onTermsStatus(int status) override
    {
        observers.notifyCopy(&Observer::onTermsStatus, statuses.fromSdk(status));
    }

    ObserverList<ISystemTermsControl::Observer> observers;

private:
    using Observer = ISystemTermsControl::Observer;
};

SdkSystemTermsControl::SdkSystemTermsControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
    , m_listener(std::make_unique<Listener>())
{
    SdkSystemTermsControl::onControlsAvailable();
}

SdkSystemTermsControl::~SdkSystemTermsControl()
{
    detachForEver(m_control, m_listener.get());
}

std::vector<ISystemTermsControl::TermsRecord> SdkSystemTermsControl::termsRecords()
{
    return readConverted(m_control, &ISdkControl::termsRecords, fromSdk);
}

void SdkSystemTermsControl::writeSystemTerms(QDateTime time, double parameter, std::vector<TermsRecord> records,
                                             const vna::ErrorTerms& terms)
{
    // Only this form has nothing to do without records.
    if (records.empty())
        return;
    if (const auto locked = m_control.lock()) {
        const qint64 seconds = time.toSecsSinceEpoch();
        auto sdkTerms = errorTermsToSdk(terms);
        locked->writeSystemTerms(seconds, parameter, toSdk(records), std::move(sdkTerms));
    }
}

void SdkSystemTermsControl::writeSystemTerms(QDateTime time, double parameter, const vna::ErrorTerms& terms)
{
    if (const auto locked = m_control.lock())
        locked->writeSystemTerms(time.toSecsSinceEpoch(), parameter, errorTermsToSdk(terms));
}

bool SdkSystemTermsControl::systemTermsFlag()
{
    return read(m_control, false, &ISdkControl::systemTermsFlag);
}

void SdkSystemTermsControl::addObserver(Observer* observer)
{
    m_listener->observers.add(observer);
}

void SdkSystemTermsControl::removeObserver(Observer* observer)
{
    m_listener->observers.remove(observer);
}

void SdkSystemTermsControl::onControlsAboutToBeReleased()
{
    write(m_control, &ISdkControl::removeObserver, m_listener.get());
}

void SdkSystemTermsControl::onControlsAvailable()
{
    write(m_control, &ISdkControl::addObserver, m_listener.get());
}

} // namespace tov::devices::service
