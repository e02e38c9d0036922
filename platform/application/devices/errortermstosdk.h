#pragma once

#include "devices/devices_export.h"
#include "sdk/corrections/errorterms.h"
#include "vna/errorterms.h"

namespace tov::devices {

/// The SDK's form of `terms`; every number is kept bit for bit, also one that is not a number.
///
/// Thread: *any thread*.
DEVICES_EXPORT sdk::corrections::ErrorTerms errorTermsToSdk(const vna::ErrorTerms& terms);

} // namespace tov::devices
