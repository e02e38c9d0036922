#pragma once

#include <complex>
#include <vector>

namespace tov::vna {

/// The system error terms of an analyser: complex values on one grid of frequencies.
///
/// Every list of values is meant to have one value per frequency; nothing checks it.
struct ErrorTerms
{
    /// One value per frequency.
    using Values = std::vector<std::complex<double>>;

    /// Terms of one port as source and receiver of a reflection measurement.
    struct Port
    {
        int port = 0;              ///< number of the port
        Values directivity;        ///< what is received without a reflection
        Values sourceMatch;        ///< reflection by the port as the source
        Values reflectionTracking; ///< frequency response of the reflection
    };

    /// Terms of a transmission measurement from one port to another.
    struct PortPair
    {
        int sourcePort = 0;          ///< number of the port that transmits
        int receiverPort = 0;        ///< number of the port that receives
        Values loadMatch;            ///< reflection by the receiving port
        Values transmissionTracking; ///< frequency response of the transmission
        Values isolation;            ///< crosstalk from port to port
    };

    std::vector<double> frequencies; ///< the grid, in Hz
    std::vector<Port> ports;         ///< terms of each port
    std::vector<PortPair> portPairs; ///< terms of each pair of ports
};

} // namespace tov::vna
