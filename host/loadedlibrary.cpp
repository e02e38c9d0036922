#include "host/loadedlibrary.h"

#include "service/servicecontrols.h"

#include <QFileInfo>

#ifdef Q_OS_WIN
#include <array>

#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace tov::host {

QString loadedLibraryPath()
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): both systems take any address inside
    void* const inside = reinterpret_cast<void*>(&devices::service::servicecontrols::registrate);

#ifdef Q_OS_WIN
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<LPCWSTR>(inside), &module))
        return {};
    std::array<wchar_t, 32768> path; // as long as one can be
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    return QString::fromWCharArray(path.data(), static_cast<int>(length));
#else
    Dl_info library{};
    if (dladdr(inside, &library) == 0)
        return {};
    return QFileInfo(QString::fromLocal8Bit(library.dli_fname)).canonicalFilePath();
#endif
}

} // namespace tov::host
