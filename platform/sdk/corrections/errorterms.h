#pragma once

#include <vector>

namespace sdk::corrections {

/// Real and imaginary part of one value of an error term.
struct Complex
{
    double real = 0.0;
    double imaginary = 0.0;
};

/// Error terms of one port, a value per frequency.
struct PortTerms
{
    int port = 0;
    std::vector<Complex> directivity;
    std::vector<Complex> sourceMatch;
    std::vector<Complex> reflectionTracking;
};

/// Error terms of a path from one port to another, a value per frequency.
struct PathTerms
{
    int sourcePort = 0;
    int receiverPort = 0;
    std::vector<Complex> loadMatch;
    std::vector<Complex> transmissionTracking;
    std::vector<Complex> isolation;
};

/// The system error terms of an instrument on a grid of frequencies.
struct ErrorTerms
{
    std::vector<double> frequencies;
    std::vector<PortTerms> ports;
    std::vector<PathTerms> paths;
};

} // namespace sdk::corrections
