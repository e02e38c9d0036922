#include "devices/errortermstosdk.h"

namespace tov::devices {

namespace {

std::vector<sdk::corrections::Complex> toSdk(const vna::ErrorTerms::Values& values)
{
    std::vector<sdk::corrections::Complex> converted;
    converted.reserve(values.size());
    for (const std::complex<double>& value : values)
        converted.push_back({value.real(), value.imag()});
    return converted;
}

} // namespace

sdk::corrections::ErrorTerms errorTermsToSdk(const vna::ErrorTerms& terms)
{
    sdk::corrections::ErrorTerms converted;
    converted.frequencies = terms.frequencies;
    converted.ports.reserve(terms.ports.size());
    for (const auto& port : terms.ports)
        converted.ports.push_back(
            {port.port, toSdk(port.directivity), toSdk(port.sourceMatch), toSdk(port.reflectionTracking)});
    converted.paths.reserve(terms.portPairs.size());
    for (const auto& pair : terms.portPairs)
        converted.paths.push_back({pair.sourcePort, pair.receiverPort, toSdk(pair.loadMatch),
                                   toSdk(pair.transmissionTracking), toSdk(pair.isolation)});
    return converted;
}

} // namespace tov::devices
