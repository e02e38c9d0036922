#pragma once

#include "provider/iprovider.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <memory>
#include <vector>

namespace tov::host {

/// What a provider can be told when it opens an instrument.
struct ProviderOption
{
    /// What its values are.
    enum class Type {
        Flag,   ///< true or false
        Number, ///< a whole number, not below 0
        Text,   ///< any text
        Choice, ///< one of `choices`
        List,   ///< texts; it may be given more than once
    };

    QString name;             ///< as it is given
    Type type = Type::Text;   ///< of its values
    QStringList choices;      ///< the values of a `Choice`
    QVariant valueIfNotGiven; ///< of its type
    QString meaning;          ///< for people
};

/// A provider as its plug-in describes it; none of its code was run for that.
struct ProviderDescription
{
    QString file;                        ///< the plug-in, with its whole path
    QString name;                        ///< by which it is asked for
    QString version;                     ///< its own
    QString description;                 ///< for people
    std::vector<ProviderOption> options; ///< what it can be told
};

/// A file that is no provider for this program.
struct RefusedFile
{
    QString file; ///< with its whole path
    QString why;  ///< in one line
};

/// What there is to open instruments with.
struct Providers
{
    QStringList folders;                    ///< where was looked, in this order; of two of one name the first counts
    std::vector<ProviderDescription> found; ///< in the order of the folders, by file name
    std::vector<RefusedFile> refused;       ///< the files that look like plug-ins, and are none
};

/// What is to be opened with what.
struct ProviderChoice
{
    ProviderDescription provider; ///< with this one
    QString instrument;           ///< this instrument of its; empty: the first
    QVariantMap options;          ///< has a value for each of the provider's
};

/// An instrument that was opened.
struct OpenInstrument
{
    provider::InstrumentDescription description;       ///< as its provider lists it; only its id if it does not
    std::unique_ptr<provider::IConnection> connection; ///< never null, nor is its instrument
};

/// Looks for providers in the folders that DEVICESSERVICE_PROVIDER_PATH lists, and in that of the installed ones, which
/// is found from where the library DevicesService is. Only whole paths count, and only files with the suffix that
/// libraries have.
///
/// Thread: *any thread*.
Providers findProviders();

/// Understands NAME-OR-FILE[:OPTION=VALUE,...]. What looks like a path is the file of a plug-in, anything else the name
/// of one that is found. If `named` is empty, DEVICESSERVICE_PROVIDER counts, and the simulated instrument without
/// that.
///
/// Thread: *any thread*.
provider::Result<ProviderChoice> chooseProvider(const QString& named);

/// Gives the option of the choice's provider another value, which stands in `text` as a person writes it; one of a
/// list comes in addition.
provider::Result<void> setOption(ProviderChoice& choice, const QString& name, const QString& text);

/// The instruments that the provider could open now. What it throws is an error too.
///
/// Thread: one at a time for each provider, on any thread.
provider::Result<std::vector<provider::InstrumentDescription>> findInstruments(const ProviderDescription& provider);

/// Opens the chosen instrument, which may take long. What the provider throws is an error too.
///
/// Thread: one at a time for each provider, on any thread.
provider::Result<OpenInstrument> openInstrument(const ProviderChoice& choice);

} // namespace tov::host
