#pragma once

// The two calibrations of the Yq module, so that one suite walks what they share.

#include "devices/reacquiringcontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "testing/fakecalibrationcontrol.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace tov::testing {

struct IfswCalibration
{
    using Adapter = devices::service::SdkYqIfswCalibrationControl;
    using SdkIface = sdk::service::IYqIfswCalibrationControl;
    using Fake = FakeYqIfswCalibrationControl;
};

struct FactoryPowerCalibration
{
    using Adapter = devices::service::SdkYqFactoryPowerCalibrationControl;
    using SdkIface = sdk::service::IYqFactoryPowerCalibrationControl;
    using Fake = FakeYqFactoryPowerCalibrationControl;
};

using Calibrations = ::testing::Types<IfswCalibration, FactoryPowerCalibration>;

struct CalibrationName
{
    template <typename Calibration>
    static std::string GetName(int /*index*/)
    {
        return std::is_same_v<Calibration, IfswCalibration> ? "Ifsw" : "FactoryPower";
    }
};

/// Writes down what it is told.
template <typename Calibration>
class StoryOfCalibration final : public Calibration::Adapter::Observer
{
public:
    void onFirstEvent() override { story.push_back("first"); }
    void onSecondEvent() override { story.push_back("second"); }
    void onThirdEvent() override { story.push_back("third"); }
    void onStateChanged(devices::service::CalibrationState state) override
    {
        story.push_back("state " + std::to_string(static_cast<int>(state)));
    }

    std::vector<std::string> story;
};

} // namespace tov::testing
