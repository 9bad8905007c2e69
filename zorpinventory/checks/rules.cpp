// The rules, in the order in which their findings are told.
#include "checks.h"
#include "families.h"

namespace zorpinventory::checks
{

namespace
{

constexpr const Rule* kRules[] = {
    &kHeaderCut,       &kLengthBelowHeader, &kAreaPastEnd,    &kStringsPastEnd,
    &kSizeUnrealistic, &kCountDiffers,      &kEntryPoint,     &kLengthDiffers,
    &kEndMissing,      &kStringMissing,     &kHandleTwice,    &kStructureTooShort,
    &kLinkOfWrongType, &kLinkDangling,      &kLinkCircle,     &kMemoryOverMaximum,
    &kCoresMiscounted, &kCodeOutOfRange,    &kDateUnreadable, &kDateInFuture,
    &kDateUnlikely,    &kUuidPlaceholder,   &kSerialRepeated, &kControlCharacters,
    &kNotUtf8,         &kPlaceholder,       &kTemplateDevice, &kMemoryDevicesMiscounted,
    &kMemoryMixed,     &kMemoryBelowSpeed,
};

} // namespace

std::span<const Rule* const> rules() { return kRules; }

} // namespace zorpinventory::checks
