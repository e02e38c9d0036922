#pragma once

#include "service/memory/isystemtermscontrol.h"
#include "vna/errorterms.h"

#include <QDateTime>

#include <string>
#include <vector>

namespace tov::inline tools {

/// What a file of system error terms holds.
struct TermsFile
{
    QDateTime time;
    double parameter = 0.0;
    std::vector<devices::service::ISystemTermsControl::TermsRecord> records;
    vna::ErrorTerms terms;
};

/// How such a file is written, for the help.
extern const char* const termsFileFormat;

/// Reads a file of the host. Throws `Failure`, which says what is wrong with it and where:
/// "ports[0].directivity[1]".
TermsFile readTermsFile(const std::string& path);

} // namespace tov::inline tools
