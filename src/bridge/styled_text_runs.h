// Host styled text to the neutral rich-text form and back: fonts by name (through the
// database's font ids), size, colour and face bits.
#pragma once

#include "fmx_functions.h"
#include "foundation/rich_text.h"
#include "shell/host_objects.h"

namespace bridge {

// One run per stretch of one style; unstyled stretches get none. `fontSource` (the value
// holding `text`) and `env` turn font ids into names.
slib::RichText RichTextOf(const FmxText& text, const FmxData& fontSource, const FmxExprEnv& env);
// `fontSource` and `env` turn font names into the database's font ids.
fmlib::TextPtr StyledTextOf(const slib::RichText& rich, const FmxData& fontSource,
                            const FmxExprEnv& env);

}  // namespace bridge
