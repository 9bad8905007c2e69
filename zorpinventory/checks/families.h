// The rules by their names; each family has a file of its own.
#pragma once

#include "rule.h"

namespace zorpinventory::checks
{

// faults.cpp
extern const Rule kHeaderCut, kLengthBelowHeader, kAreaPastEnd, kStringsPastEnd, kSizeUnrealistic, kCountDiffers,
    kEntryPoint, kLengthDiffers, kEndMissing, kStringMissing;
// structures.cpp
extern const Rule kHandleTwice, kStructureTooShort;
// links.cpp
extern const Rule kLinkOfWrongType, kLinkDangling, kLinkCircle;
// memory.cpp
extern const Rule kMemoryOverMaximum, kMemoryDevicesMiscounted, kMemoryMixed, kMemoryBelowSpeed;
// values.cpp
extern const Rule kCoresMiscounted, kCodeOutOfRange, kDateUnreadable, kDateInFuture, kDateUnlikely;
// texts.cpp
extern const Rule kUuidPlaceholder, kSerialRepeated, kControlCharacters, kNotUtf8, kPlaceholder, kTemplateDevice;

} // namespace zorpinventory::checks
