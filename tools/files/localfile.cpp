#include "tools/files/localfile.h"

#include "tools/errors.h"
#include "tools/files/standardstreams.h"

#include <QFile>

#include <filesystem>
#include <system_error>

#ifdef Q_OS_UNIX
#include <QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#else
#include <QSaveFile>
#endif

namespace tov::inline tools {

namespace {

namespace filesystem = std::filesystem;

Failure cannotBe(const std::string& done, const std::string& path, const std::string& why)
{
    Failure failure(path + " cannot be " + done + ": " + why);
    return failure;
}

QByteArray readUpTo(qint64 most, QFile& file, const std::string& path)
{
    QByteArray contents = file.read(most + 1);
    if (file.error() != QFileDevice::NoError)
        throw cannotBe("read", path, file.errorString().toStdString());
    if (contents.size() > most)
        throw Failure(path + " has more than the " + std::to_string(most) + " bytes that fit");
    return contents;
}

void writeAll(const QByteArray& contents, QFileDevice& file, const std::string& path)
{
    if (file.write(contents) != contents.size() || !file.flush())
        throw cannotBe("written", path, file.errorString().toStdString());
}

#ifdef Q_OS_UNIX

// Qt's names of files are text; the system's are any bytes.

filesystem::path nativePath(const std::string& path)
{
    return path;
}

std::string lastError()
{
    return std::generic_category().message(errno);
}

void openToRead(QFile& file, const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC); // NOLINT(cppcoreguidelines-pro-type-vararg)
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        throw cannotBe("read", path, lastError());
}

bool openToWrite(QFile& file, const filesystem::path& path, int flags)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0666);
    return descriptor >= 0
           && file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
}

void openToWrite(QFile& file, const std::string& path)
{
    if (!openToWrite(file, path, O_TRUNC))
        throw cannotBe("written", path, lastError());
}

// Writes beside the file first, so that it is never half of one.
void replaceFile(const std::string& path, const QByteArray& contents)
{
    std::error_code error;
    const bool isLink = filesystem::is_symlink(filesystem::symlink_status(path, error));
    const filesystem::path target = isLink ? filesystem::canonical(path, error) : filesystem::path(path);
    if (isLink && error)
        throw cannotBe("written", path, error.message());

    const auto temporary = target.string() + "." + std::to_string(QRandomGenerator::system()->generate());
    try {
        QFile file;
        const bool isOpen = openToWrite(file, temporary, O_EXCL);
        if (isOpen)
            writeAll(contents, file, path);
        if (!isOpen || fsync(file.handle()) != 0)
            throw cannotBe("written", path, lastError());
        if (const auto status = filesystem::status(target, error); filesystem::exists(status))
            filesystem::permissions(temporary, status.permissions(), error); // as far as they can be given
        filesystem::rename(temporary, target);
    } catch (const filesystem::filesystem_error& failure) {
        filesystem::remove(temporary, error);
        throw cannotBe("written", path, failure.code().message());
    } catch (...) {
        filesystem::remove(temporary, error);
        throw;
    }
}

#else

filesystem::path nativePath(const std::string& path)
{
    return QString::fromStdString(path).toStdU16String();
}

void openToRead(QFile& file, const std::string& path)
{
    file.setFileName(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        throw cannotBe("read", path, file.errorString().toStdString());
}

void openToWrite(QFile& file, const std::string& path)
{
    file.setFileName(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw cannotBe("written", path, file.errorString().toStdString());
}

void replaceFile(const std::string& path, const QByteArray& contents)
{
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly))
        throw cannotBe("written", path, file.errorString().toStdString());
    writeAll(contents, file, path);
    if (!file.commit())
        throw cannotBe("written", path, file.errorString().toStdString());
}

#endif

} // namespace

QByteArray readLocalFile(const std::string& path, qint64 most)
{
    QFile file;
    if (path != "-")
        openToRead(file, path);
    else if (!openStandardInput(file))
        throw cannotBe("read", "standard input", file.errorString().toStdString());
    return readUpTo(most, file, path != "-" ? path : "standard input");
}

void requireWritable(const LocalTarget& target)
{
    std::error_code none;
    if (!target.force && !target.isStandardOutput()
        && filesystem::is_regular_file(filesystem::status(nativePath(target.path), none)))
        throw Failure(target.path + " is there already; --force replaces it");
}

void openLocalFile(QFile& file, const LocalTarget& target)
{
    requireWritable(target);
    openToWrite(file, target.path);
}

void writeLocalFile(const LocalTarget& target, const QByteArray& contents)
{
    requireWritable(target);
    std::error_code none;
    if (target.isStandardOutput()) {
        writeStandardOutput(contents);
    } else if (const auto status = filesystem::status(nativePath(target.path), none);
               filesystem::exists(status) && !filesystem::is_regular_file(status)) {
        QFile device; // or a pipe, which are not replaced
        openToWrite(device, target.path);
        writeAll(contents, device, target.path);
    } else {
        replaceFile(target.path, contents);
    }
}

} // namespace tov::inline tools
