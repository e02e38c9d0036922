#pragma once

#include <vector>

namespace sdk::corrections {

/// Real and imaginary part of one value of an error term.
struct Complex
{
    double real = 0.0;      ///< real part
    double imaginary = 0.0; ///< imaginary part
};

/// Error terms of one port, a value per frequency.
struct PortTerms
{
    int port = 0;                            ///< the port, as the application numbers it
    std::vector<Complex> directivity;        ///< what is received without a reflection
    std::vector<Complex> sourceMatch;        ///< reflection by the port as the source
    std::vector<Complex> reflectionTracking; ///< frequency response of the reflection
};

/// Error terms of a path from one port to another, a value per frequency.
struct PathTerms
{
    int sourcePort = 0;                        ///< the port that transmits, as the application numbers it
    int receiverPort = 0;                      ///< the port that receives, as the application numbers it
    std::vector<Complex> loadMatch;            ///< reflection by the receiving port
    std::vector<Complex> transmissionTracking; ///< frequency response of the transmission
    std::vector<Complex> isolation;            ///< crosstalk from port to port
};

/// The system error terms of an instrument on a grid of frequencies. The library checks nothing: lists may be of any
/// length, and values need not be finite.
struct ErrorTerms
{
    std::vector<double> frequencies; ///< the grid, as the application gives it: in Hz
    std::vector<PortTerms> ports;    ///< terms of each port
    std::vector<PathTerms> paths;    ///< terms of each path
};

} // namespace sdk::corrections
