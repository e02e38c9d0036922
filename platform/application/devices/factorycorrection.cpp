#include "devices/factorycorrection.h"

#include <array>

namespace tov::devices {

namespace {

struct Pair
{
    FactoryCorrection correction;
    sdk::CorrectionFlag flag;
};

constexpr std::array<Pair, 10> pairs = {{
    {FactoryCorrection::Correction1, sdk::CorrectionFlag{0x0001}},
    {FactoryCorrection::Correction2, sdk::CorrectionFlag{0x0002}},
    {FactoryCorrection::Correction3, sdk::CorrectionFlag{0x0004}},
    {FactoryCorrection::Correction4, sdk::CorrectionFlag{0x0008}},
    {FactoryCorrection::Correction5, sdk::CorrectionFlag{0x0020}},
    {FactoryCorrection::Correction6, sdk::CorrectionFlag{0x0040}},
    {FactoryCorrection::Correction7, sdk::CorrectionFlag{0x0100}},
    {FactoryCorrection::Correction8, sdk::CorrectionFlag{0x0200}},
    {FactoryCorrection::Correction9, sdk::CorrectionFlag{0x1000}},
    {FactoryCorrection::Correction10, sdk::CorrectionFlag{0x8000}},
}};

} // namespace

sdk::CorrectionFlag toSdkCorrection(FactoryCorrection correction)
{
    for (const Pair& pair : pairs)
        if (pair.correction == correction)
            return pair.flag;
    return {};
}

std::optional<FactoryCorrection> fromSdkCorrection(sdk::CorrectionFlag flag)
{
    for (const Pair& pair : pairs)
        if (pair.flag == flag)
            return pair.correction;
    return {};
}

} // namespace tov::devices
