#include "console/whole/savedrow.h"

#include "tools/errors.h"

#include <QCryptographicHash>
#include <QJsonArray>

namespace tov::console {

using namespace Qt::StringLiterals;

QJsonObject contentsToJson(const QByteArray& contents)
{
    const QByteArray digest = QCryptographicHash::hash(contents, QCryptographicHash::Sha256);
    return {{"bytes"_L1, contents.size()},
            {"sha256"_L1, QString::fromLatin1(digest.toHex())},
            {"base64"_L1, QString::fromLatin1(contents.toBase64())}};
}

QJsonValue withoutContents(const QJsonValue& value)
{
    if (value.isArray()) {
        QJsonArray list;
        for (const auto& element : value.toArray())
            list.append(withoutContents(element));
        return list;
    }
    if (!value.isObject())
        return value;
    QJsonObject object = value.toObject();
    if (object.contains("base64"_L1) && object.contains("sha256"_L1)) {
        object.remove("base64"_L1);
        return object;
    }
    for (const QString& name : object.keys())
        object[name] = withoutContents(object[name]);
    return object;
}

void SavedRow::fail(const char* column, const std::string& expected) const
{
    throw Failure(m_place + "." + column + ": expected " + expected);
}

QString SavedRow::text(const char* column) const
{
    if (!(*this)[column].isString())
        fail(column, "a text");
    return (*this)[column].toString();
}

bool SavedRow::flag(const char* column) const
{
    if (!(*this)[column].isBool())
        fail(column, "true or false");
    return (*this)[column].toBool();
}

QByteArray SavedRow::contents(const char* column) const
{
    const QJsonValue value = (*this)[column];
    const auto decoded = QByteArray::fromBase64Encoding(value["base64"_L1].toString().toLatin1(),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    if (!value["base64"_L1].isString() || !decoded)
        fail(column, "contents in base64");
    if (contentsToJson(*decoded) != value.toObject())
        fail(column, "contents of this size and digest");
    return *decoded;
}

} // namespace tov::console
