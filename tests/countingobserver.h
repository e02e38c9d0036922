#pragma once

#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/memory/imemoryoperationscontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/memory/isystemtermscontrol.h"

namespace tov::testing {

/// An observer that counts how often it was told, whatever it was told.
template <typename Adapter>
class CountingObserver;

template <>
class CountingObserver<devices::service::ISerialNumberControl> final
    : public devices::service::ISerialNumberControl::Observer
{
public:
    int told = 0;

    void onSerialNumberEvent(const devices::service::SerialNumberEvent& /*event*/) override { ++told; }
};

template <>
class CountingObserver<devices::service::IMemoryOperationsControl> final
    : public devices::service::IMemoryOperationsControl::IObserver
{
public:
    int told = 0;

    void onNotification1(const devices::service::MemoryOperationEvent& /*event*/) override { ++told; }
    void onNotification2(const devices::service::MemoryOperationEvent& /*event*/) override { ++told; }
    void onNotification3(const devices::service::MemoryOperationEvent& /*event*/) override { ++told; }
    void onNotification4(const devices::service::MemoryOperationEvent& /*event*/) override { ++told; }
};

template <>
class CountingObserver<devices::service::ISystemTermsControl> final
    : public devices::service::ISystemTermsControl::Observer
{
public:
    int told = 0;

    void onTermsNotice() override { ++told; }
    void onTermsValue(unsigned int /*value*/) override { ++told; }
    void onTermsSecondNotice() override { ++told; }
    void onTermsStatus(devices::service::ISystemTermsControl::Status /*status*/) override { ++told; }
};

template <>
class CountingObserver<devices::service::SdkFactoryCorrectionControl> final
    : public devices::service::SdkFactoryCorrectionControl::Observer
{
public:
    int told = 0;

    void onCorrectionsChanged() override { ++told; }
    void onCorrectionStatesChanged() override { ++told; }
    void onEnabledChanged(devices::FactoryCorrection /*correction*/, bool /*enabled*/) override { ++told; }
};

/// That of either calibration of the Yq module.
template <typename Adapter>
    requires requires { typename Adapter::FrequencyPlan; }
class CountingObserver<Adapter> final : public Adapter::Observer
{
public:
    int told = 0;

    void onFirstEvent() override { ++told; }
    void onSecondEvent() override { ++told; }
    void onThirdEvent() override { ++told; }
    void onStateChanged(devices::service::CalibrationState /*state*/) override { ++told; }
};

} // namespace tov::testing
