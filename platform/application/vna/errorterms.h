#pragma once

#include <complex>
#include <vector>

namespace tov::vna {

/// The system error terms of an analyser: complex values on one grid of frequencies.
///
/// Every list of values has one value per frequency.
struct ErrorTerms
{
    using Values = std::vector<std::complex<double>>;

    /// Terms of one port as source and receiver of a reflection measurement.
    struct Port
    {
        int port = 0;
        Values directivity;
        Values sourceMatch;
        Values reflectionTracking;
    };

    /// Terms of a transmission measurement from one port to another.
    struct PortPair
    {
        int sourcePort = 0;
        int receiverPort = 0;
        Values loadMatch;
        Values transmissionTracking;
        Values isolation;
    };

    std::vector<double> frequencies; // Hz
    std::vector<Port> ports;
    std::vector<PortPair> portPairs;
};

} // namespace tov::vna
