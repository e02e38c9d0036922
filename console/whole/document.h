#pragma once

#include "console/session/consolesession.h"
#include "console/whole/part.h"

#include <QJsonObject>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tov::console {

/// What a document is for.
enum class DocumentKind {
    Report, ///< to read: contents stand there by their digests
    Backup, ///< to restore
};

/// An instrument with all its parts, and when and by what it was read.
QJsonObject readInstrument(ConsoleSession& console, DocumentKind kind);

/// A document of a file of this computer, which must be of this program's making, whole and of a version that it
/// knows. Throws `Failure`, which says what is wrong and where.
QJsonObject readDocument(const std::string& path);

/// Whether it can be restored.
bool isBackup(const QJsonObject& document);

/// Of a part: its rows, an object with an "error" only, or undefined when the document lacks it.
QJsonValue partOf(const QJsonObject& document, const Part& part);

/// What can be read of a document before its parts, as pairs of a name and a text.
std::vector<std::pair<std::string, std::string>> headerOf(const QJsonObject& document);

/// What people read over a column of the part.
std::string headingOf(const Part& part, const std::string& column);

/// The cells of a row under the columns of its part; an error stands in the first that is no key.
std::vector<std::string> columnsOf(const Part& part);
std::vector<std::string> cellsOf(const Part& part, const QJsonObject& row);

/// The document for people, on a terminal of so many columns; 0: no limit.
std::string documentText(const QJsonObject& document, std::size_t width);

/// The same as a page of HTML that needs no other file.
QByteArray documentPage(const QJsonObject& document);

} // namespace tov::console
