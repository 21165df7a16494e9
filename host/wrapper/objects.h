// The complete types behind the opaque handles of the plug-in interface. Each one wraps a value
// of the host core. Getters that hand out borrowed pointers keep the borrowed object inside its
// owner, so the pointer stays valid for as long as the owner lives (and is refreshed in place
// when asked again).
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/character_style.h"
#include "core/container.h"
#include "core/date_time.h"
#include "core/decimal.h"
#include "core/text.h"
#include "core/type_code.h"
#include "core/value.h"
#include "fmx_functions.h"

namespace fmhost {
class EvalContext;
}

struct FmxQuadChar {
    fmhost::TypeCode code;
};

struct FmxLocale {
    int32_t type = fmhost::kDefaultLocale;
};

struct FmxText {
    fmhost::Text text;
};

struct FmxColor {
    fmhost::Color color;
};

struct FmxCharacterStyle {
    fmhost::CharacterStyle style;
    FmxColor colorView;  // what GetColor lends out
};

struct FmxFixPt {
    fmhost::Decimal number;
};

struct FmxDateTime {
    fmhost::DateTime value;
};

struct FmxBinaryData {
    fmhost::Container container;
};

struct FmxData {
    fmhost::Value value;

    // Views lent out by the getters; created on first use.
    mutable std::unique_ptr<FmxText> textView;
    mutable std::unique_ptr<FmxFixPt> numberView;
    mutable std::unique_ptr<FmxDateTime> dateView;
    mutable std::unique_ptr<FmxDateTime> timeView;
    mutable std::unique_ptr<FmxDateTime> timestampView;
    mutable std::unique_ptr<FmxBinaryData> binaryView;
    mutable std::unique_ptr<FmxLocale> localeView;

    FmxData() = default;
    explicit FmxData(fmhost::Value v) : value(std::move(v)) {}
    // Copies take the value only: views belong to the object that lent them.
    FmxData(const FmxData& other) : value(other.value) {}
    FmxData& operator=(const FmxData& other) {
        value = other.value;
        return *this;
    }
};

struct FmxDataVect {
    std::vector<std::unique_ptr<FmxData>> items;
};

struct FmxRowVect {
    std::vector<std::unique_ptr<FmxDataVect>> rows;
};

// A calculation environment. Unbound (null context) until the host fills it; an unbound one
// evaluates in the host's default context.
struct FmxExprEnv {
    fmhost::EvalContext* context = nullptr;
};
