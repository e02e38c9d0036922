"""Breaches of the contract, each made in copies of headers. A check that does not notice one is worth nothing."""

import dataclasses
import pathlib

import headers
from compiler import Failure


@dataclasses.dataclass(frozen=True)
class Canary:
    """What happens to a header, in which classes alone it must show, and for which layouts it is a breach."""

    header: str
    replaced: str
    replacement: str
    breaks: tuple
    layouts: tuple = ("itanium", "msvc")


def _swap(header, first, second, breaks):
    source = headers.source_of(header)
    start, end = source.index(first), source.index(second)
    between = source[start + len(first):end]
    return Canary(header, first + between + second, second + between + first, breaks)


CANARIES = {
    "swapped-slots": _swap(
        "sdk/service/iloleakagecontrol.h", "virtual bool isEnabled() = 0;", "virtual void setEnabled(bool enabled) = 0;",
        ("sdk::service::ILoLeakageControl",)),
    "added-slot": Canary(
        "sdk/service/iloleakagecontrol.h", "virtual void setEnabled(bool enabled) = 0;",
        "virtual void setEnabled(bool enabled) = 0; virtual void toggle() = 0;",
        ("sdk::service::ILoLeakageControl",)),
    "overloads-not-turned-for-msvc": Canary(
        "sdk/slotorder.h", "#ifdef _MSC_VER", "#if 0",
        ("sdk::service::ISystemTermsControl", "tov::devices::service::ISystemTermsControl"), ("msvc",)),
    "overloads-turned-for-all": Canary(
        "sdk/slotorder.h", "#ifdef _MSC_VER", "#if 1",
        ("sdk::service::ISystemTermsControl", "tov::devices::service::ISystemTermsControl"), ("itanium",)),
    "swapped-fields": _swap(
        "sdk/corrections/errorterms.h", "int sourcePort = 0;", "int receiverPort = 0;", ("sdk::corrections::PathTerms",)),
    "narrower-field": Canary(
        "sdk/frequencyplan.h", "std::int32_t points", "std::int16_t points", ("sdk::FrequencyPlan::Segment",)),
    "swapped-members": _swap(
        "service/monitoring/sdktemperaturecontrol.h", "std::vector<ModuleTemperature> m_modules;",
        "double m_temperature = 0.0;", ("tov::devices::service::SdkTemperatureControl",)),
    "copyable-class": Canary(
        "service/memory/sdkserialnumbercontrol.h", "SdkSerialNumberControl(const SdkSerialNumberControl&) = delete;",
        "SdkSerialNumberControl(const SdkSerialNumberControl&);", ("tov::devices::service::SdkSerialNumberControl",)),
}


def write_overlay(name, folder):
    """Writes the header that a canary breaks into `folder`, under the name by which it is included."""
    canary = CANARIES[name]
    source = headers.source_of(canary.header)
    if source.count(canary.replaced) != 1:
        raise Failure(f"{canary.header} does not have, once, what {name} replaces: {canary.replaced}")
    path = pathlib.Path(folder, canary.header)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(source.replace(canary.replaced, canary.replacement))
    return canary
