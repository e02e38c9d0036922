#include "host/loadedlibrary.h"

#include "service/servicecontrols.h"

#include <QFileInfo>

#ifdef Q_OS_WIN
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
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
    return QString::fromWCharArray(path, static_cast<int>(length));
#else
    Dl_info library{};
    if (dladdr(inside, &library) == 0)
        return {};
    return QFileInfo(QString::fromLocal8Bit(library.dli_fname)).canonicalFilePath();
#endif
}

} // namespace tov::host
