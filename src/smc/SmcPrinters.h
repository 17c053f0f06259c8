#pragma once

#include "platform/IOKit.h"
#include "smc/SmcClient.h"

// The diagnostic dumps, printed to smcOutput(). What smcPrintAllKeys prints is a valid keys file.

namespace calorivo {

/// One line: key, type, number (of the types that have one) and raw bytes.
void smcPrintValue(const SmcValue& value);
void smcPrintBytes(const SmcValue& value);
void smcPrintFpe2(const SmcValue& value);
void smcPrintUnsigned(const SmcValue& value);
/// Every key that can be read; 0, also when there are none.
int smcPrintAllKeys();
/// 0, or io_return::error when the number of fans cannot be read.
kern_return_t smcPrintFans();

}  // namespace calorivo
