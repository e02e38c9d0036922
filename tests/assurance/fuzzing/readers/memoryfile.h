#pragma once

#include "readers/check.h"
#include "tools/errors.h"

#include <QByteArray>

#include <optional>
#include <string_view>

namespace tov::testing {

/// The one local file of a program that reads no others; it stands in for tools/files/localfile.cpp.
inline QByteArray memoryFile;

/// What `read` makes of `contents`, or nothing when it says what is wrong with it.
auto readFrom(const QByteArray& contents, auto read) -> std::optional<decltype(read("file"))>
{
    memoryFile = contents;
    try {
        return read("file");
    } catch (const tools::Failure& failure) {
        require(std::string_view(failure.what()).starts_with("file, "), "a failure says where it is");
        require(memoryFile == contents, "a file that is read stays as it is");
        return std::nullopt;
    }
}

} // namespace tov::testing
