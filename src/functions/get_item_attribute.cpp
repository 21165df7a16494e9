// VFile_Get( itemSelector ; path ): an attribute, a path form or the kind of an item.
#include "bridge/item_selectors.h"
#include "bridge/path_context.h"
#include "bridge/system_path_rules.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/number.h"
#include "foundation/path.h"
#include "functions/get_selectors.h"
#include "shell/host_data.h"
#include "shell/keyword_lookup.h"
#include "shell/result.h"

namespace functions {

namespace {

void SetResultValue(FmxData& result, const slib::Object& value) {
    if (const auto* date = dynamic_cast<const slib::Date*>(&value)) {
        fmlib::SetResultTimestamp(result, *date);
    } else if (const auto* number = dynamic_cast<const slib::Number*>(&value)) {
        fmlib::SetResultInteger(result, number->asInt64());
    } else {
        fmlib::SetResultText(result, value.description()->units());
    }
}

uint32_t RightsOf(const slib::Object& value) {
    return static_cast<uint32_t>(dynamic_cast<const slib::Number&>(value).asInt64());
}

}  // namespace

void GetItemAttribute(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String path = paths.pathArgument(call.args, 1);
    const int32_t selector =
        fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 0), bridge::kItemSelectors);
    if (selector < 0) {
        slib::Throw(slib::kBadParameter, "Wrong attribute name");
    }
    const slib::FileManager manager;
    if (selector < bridge::kSelectOwnerRights) {
        SetResultValue(call.result, *manager.getAttribute(path, static_cast<uint32_t>(selector)));
    } else if (selector < bridge::kSelectFirstPathForm) {
        const auto rights = manager.getAttribute(path, static_cast<uint32_t>(selector));
        fmlib::SetResultText(call.result, bridge::RightsText(RightsOf(*rights)));
    } else if (selector <= bridge::kSelectLastPathForm) {
        const slib::Path item(path.units());
        const auto text =
            bridge::FormatSystemPath(item, bridge::PathStyleOfSelector(selector), paths.anchor());
        fmlib::SetResultText(call.result, text->units());
    } else {
        const uint32_t kind = manager.getItemKind(path);
        if (kind == slib::ItemKind::kNone) {
            slib::Throw(slib::kItemNotFound, "Item does not exist");
        }
        fmlib::SetResultText(call.result, kind == slib::ItemKind::kFile ? u"file" : u"folder");
    }
}

}  // namespace functions
