// Numeric constants of the host's plug-in interface.
#pragma once

#include <cstdint>

namespace fmx {

// Messages (the record's whichCall).
enum Message : uint8_t {
    kMsgInit = 0,
    kMsgIdle = 1,
    kMsgShutdown = 4,
    kMsgPreferences = 5,
    kMsgGetString = 7,
    kMsgSessionShutdown = 8,
    kMsgFileShutdown = 9,
    kMsgSchemaChange = 10,
};

// Get-string ids (parm1 of a get-string message).
enum StringId : uint8_t {
    kStrName = 128,
    kStrPreferences = 129,
    kStrOptions = 131,
    kStrHelpUrl = 132,
};

// Answers to the init message.
constexpr int64_t kDoNotEnable = -2;
constexpr int64_t kBadExtnVersion = -1;
constexpr int16_t kMaxExtnVersion = 255;
constexpr int16_t kCurrentExtnVersion = 77;

// Native types of a Data value.
enum DataType : int32_t {
    kDTInvalid = 0,
    kDTText = 1,
    kDTNumber = 2,
    kDTDate = 3,
    kDTTime = 4,
    kDTTimeStamp = 5,
    kDTBinary = 6,
    kDTBoolean = 7,
};

// Text encodings (0..36 are defined); only the ones we name in code are listed.
enum Encoding : int32_t {
    kEncodingNative = 0,
    kEncodingUTF8 = 1,
    kEncodingLast = 36,
};

// Locale types.
enum LocaleType : int32_t { kLocaleNone = 0, kLocaleSystem = 1 };

// Registration flags.
constexpr uint32_t kMayEvaluateOnServer = 0x00000001;
constexpr uint32_t kDisplayInAllDialogs = 0x0000FF00;

// Face bits of a character style.
enum Face : uint16_t {
    kFacePlain = 0,
    kFaceStrikethrough = 0x0001,
    kFaceSmallCaps = 0x0002,
    kFaceSuperscript = 0x0004,
    kFaceSubscript = 0x0008,
    kFaceUppercase = 0x0010,
    kFaceLowercase = 0x0020,
    kFaceTitlecase = 0x0030,
    kFaceWordUnderline = 0x0040,
    kFaceDoubleUnderline = 0x0080,
    kFaceBold = 0x0100,
    kFaceItalic = 0x0200,
    kFaceUnderline = 0x0400,
    kFaceOutline = 0x0800,
    kFaceShadow = 0x1000,
    kFaceCondensed = 0x2000,
    kFaceExtended = 0x4000,
    kFaceAllStyles = 0x7FFF,
};

// "To the end" for ranges, and "not found" for searches.
constexpr uint32_t kSizeEnd = 0xFFFFFFFFu;
constexpr uint32_t kSizeInvalid = 0xFFFFFFFFu;

constexpr int32_t kDefaultPrecision = 16;
constexpr uint16_t kInvalidFontId = 0xFFFF;

}  // namespace fmx
