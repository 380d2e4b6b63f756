// SPDX-License-Identifier: MIT
// The codes of the component's messages. Their texts stand in `resources/`, one file per language.
#pragma once

#include "automation/Enumeration.h"

namespace vlgs {

/// The codes whose names end in X are raised with an extra text: a path, a name or another error's
/// description.
// clang-format off
#define VLGS_MESSAGES(value) \
    value(eMsg_Empty, 0) \
    value(eMsg_InvalidDatatype, 11501) \
    value(eMsg_InvalidFilepathSpecified, 11502) \
    value(eMsg_InvalidVLSFileFormat, 11503) \
    value(eMsg_NotAvailableOnNonVLSFileType, 11504) \
    value(eMsg_ErrorParsingVLSFile, 11505) \
    value(eMsg_ClassDDEDescription, 11506) \
    value(eMsg_ClassGeneralDescription, 11507) \
    value(eMsg_SectionNameCannotBeBlank, 11508) \
    value(eMsg_DuplicateSectionName, 11509) \
    value(eMsg_KeyNameCannotBeBlank, 11510) \
    value(eMsg_DuplicateKeyName, 11511) \
    value(eMsg_ErrorSavingINIFileX, 11512) \
    value(eMsg_ErrorReadingINIFileX, 11513) \
    value(eMsg_ErrorCreatingINIFileX, 11514) \
    value(eMsg_CannotGetExclusiveLockX, 11515) \
    value(eMsg_CannotGetReadWriteLockX, 11516) \
    value(eMsg_StreamingErrorX, 11517) \
    value(eMsg_SecurityCheckFailedX, 11518) \
    value(eMsg_ErrorReadingViewPropertiesStringX, 11519) \
    value(eMsg_QuotesNotEvenX, 11520) \
    value(eMsg_ErrorTokenizingQuotedSubStringsX, 11521) \
    value(eMsg_ErrorSettingPropertyStringX, 11522) \
    value(eMsg_ErrorWritingUserLockFileX, 11523) \
    value(eMsg_InvalidLockFlag, 11524) \
    value(eMsg_ErrorTranslatingPathToUNC, 11525) \
    value(eMsg_InvalidDriveMapping, 11526) \
    value(eMsg_ErrorConvertingDriveLetterToUNC, 11527) \
    value(eMsg_InvalidFormat, 11528) \
    value(eMsg_InvalidPathFormat, 11529) \
    value(eMsg_InvalidDateTimeFormat, 11530) \
    value(eMsg_ErrorTranslatingToRelativePath, 11531) \
    value(eMsg_ErrorBasePathIsNotValid, 11532) \
    value(eMsg_ErrorBuildingPath, 11533) \
    value(eMsg_ErrorBuildingBackupPrefix, 11534) \
    value(eMsg_ErrorExtractingPathDirLevels, 11535) \
    value(eMsg_ErrorExtractingPathAllLevels, 11536) \
    value(eMsg_ErrorInPathOp, 11537) \
    value(eMsg_ErrorExtractingPathVol, 11538) \
    value(eMsg_ErrorResolvingRelativePath, 11539) \
    value(eMsg_PathString, 11540) \
    value(eMsg_BasePathString, 11541) \
    value(eMsg_RelativePathString, 11542) \
    value(eMsg_InputPathString, 11543) \
    value(eMsg_ErrorCannotBuildValidPath, 11544) \
    value(eMsg_InvalidRelativePathFormat, 11545) \
    value(eMsg_PathFormatIsIn, 11546) \
    value(eMsg_PathFormatTypeUNC, 11547) \
    value(eMsg_PathFormatTypeStandard, 11548) \
    value(eMsg_ErrorPathIsBad, 11549) \
    value(eMsg_ErrorPathsOnDiffVols, 11550) \
    value(eMsg_AttrValueIntegerValueNotNumeric, 11551) \
    value(eMsg_AttrValueIntegerValueOutOfRange, 11552) \
    value(eMsg_AttrValueIntegerValueFractionalPartNotZero, 11553) \
    value(eMsg_InvalidDateFormat, 11554) \
    value(eMsg_InvalidTimeFormat, 11555) \
    value(eMsg_CannotGetDocReadWriteLockX, 11556) \
    value(eMsg_PostFixChar, 11557) \
    value(eMsg_ODBCSectionMissing, 11558) \
    value(eMsg_KeyDBDoesNotExit, 11559) \
    value(eMsg_ErrorSavingINIFile, 1152) \
    value(eMsg_ErrorReadingINIFile, 1153) \
    value(eMsg_ErrorCreatingINIFile, 1154) \
    value(eMsg_CannotGetExclusiveLock, 1155) \
    value(eMsg_CannotGetReadWriteLock, 1156) \
    value(eMsg_StreamingError, 1157) \
    value(eMsg_SecurityCheckFailed, 1158) \
    value(eMsg_ErrorReadingViewPropertiesString, 1159) \
    value(eMsg_QuotesNotEven, 1160) \
    value(eMsg_ErrorTokenizingQuotedSubStrings, 1161) \
    value(eMsg_ErrorSettingPropertyString, 1162) \
    value(eMsg_ErrorWritingUserLockFile, 1163) \
    value(eMsg_UserLockHolder, 1164)
// clang-format on
VLGS_ENUMERATION(enumMessages, "aaede4a1-124b-4da6-9a60-850befa2dbb8", "Numbers of the component's messages",
                 VLGS_MESSAGES)

} // namespace vlgs
