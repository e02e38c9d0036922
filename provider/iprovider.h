#pragma once

#include "provider/iconnection.h"
#include "provider/result.h"

#include <QString>
#include <QVariantMap>
#include <QtPlugin>

#include <memory>
#include <vector>

/// Names this version of the interface. A plug-in of another one is not loaded.
#define DEVICESSERVICE_PROVIDER_IID "tov.devices.provider/1"

namespace tov::provider {

/// An instrument that can be opened.
struct InstrumentDescription
{
    QString id;           ///< names it to `IProvider::open()`; stays the same as long as it is the same instrument
    QString model;        ///< as its maker calls it
    QString serialNumber; ///< as it is written on it; empty when only the open instrument tells
    QString description;  ///< for people, such as where it is connected
};

/// Opens instruments. The root object of a plug-in, a class that is a `QObject` too:
///
///     class MyProvider final : public QObject, public tov::provider::IProvider
///     {
///         Q_OBJECT
///         Q_PLUGIN_METADATA(IID DEVICESSERVICE_PROVIDER_IID FILE "myprovider.json")
///         Q_INTERFACES(tov::provider::IProvider)
///
/// The JSON file describes it without its code being run:
///
///     {
///         "name": "mine",
///         "version": "1.0",
///         "description": "Instruments of mine",
///         "options": [
///             {"name": "address", "type": "text", "default": "", "meaning": "Where the instrument is"}
///         ]
///     }
///
/// A name consists of small letters, digits and hyphens. The type of an option is "flag" (true, false), "number" (a
/// whole one, not below 0), "text", "choice" (one of the texts that "choices" lists) or "list" (texts: the option may
/// be given more than once). What has no default is false, 0, empty, or the first choice. The option "instrument", the
/// id of the one to open, is the host's.
///
/// Thread: one at a time, on any thread.
class IProvider
{
public:
    IProvider() = default;
    IProvider(const IProvider&) = delete;
    IProvider& operator=(const IProvider&) = delete;
    virtual ~IProvider() = default;

    /// The instruments that could be opened now.
    virtual Result<std::vector<InstrumentDescription>> instruments() = 0;

    /// Opens the instrument of this id. `options` has a value of its type for each option that the plug-in describes.
    /// May take long, also for ever.
    virtual Result<std::unique_ptr<IConnection>> open(const QString& id, const QVariantMap& options) = 0;
};

} // namespace tov::provider

Q_DECLARE_INTERFACE(tov::provider::IProvider, DEVICESSERVICE_PROVIDER_IID)
