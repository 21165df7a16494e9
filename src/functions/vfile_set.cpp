// VFile_Set( selector ; path ; newValue ): changes an item attribute, or stages picture options
// for the next VFile_Copy. Success leaves the result empty.
#include "bridge/item_selectors.h"
#include "bridge/path_context.h"
#include "bridge/staged_picture_options.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/new_item_name.h"
#include "foundation/number.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/host_env.h"
#include "shell/host_text.h"
#include "shell/host_values.h"
#include "shell/keyword_lookup.h"
#include "shell/value_conversion.h"

namespace {

const char* const kOwnSelectors[] = {"convert", "rotate"};
enum OwnSelector { kConvert = 0, kRotate = 1 };

double NumberArgument(const FmxDataVect& args, uint32_t index) {
    return fmlib::FixPtAsFloat(fmlib::DataGetAsNumber(fmlib::DataVectAt(args, index)));
}

// Sizes come from arguments 2 and 3; one that is not given is not staged at all, so the
// conversion keeps that side free (the set itself is still created).
void StageConvert(uint64_t session, const FmxDataVect& args) {
    bridge::StagedPictureOptions::Create(session);
    const uint32_t count = fmlib::DataVectSize(args);
    if (count > 2) {
        bridge::StagedPictureOptions::Set(session, u"width", NumberArgument(args, 2));
    }
    if (count > 3) {
        bridge::StagedPictureOptions::Set(session, u"height", NumberArgument(args, 3));
    }
}

std::shared_ptr<slib::Object> NewValue(const FmxDataVect& args, int32_t selector) {
    const FmxData& value = fmlib::DataVectAt(args, 2);
    if (selector <= bridge::kSelectModified) {
        return fmlib::ToFoundationDate(fmlib::DataGetAsTimeStamp(value));
    }
    if (selector <= bridge::kSelectGroup) {
        return fmlib::ToFoundationString(fmlib::DataGetAsText(value));
    }
    return std::make_shared<slib::Number>(bridge::RightsFromWords(fmlib::DataGetAsText(value)));
}

void SetItemAttribute(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String path = paths.pathArgument(call.args, 1);
    const int32_t selector =
        fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 0), bridge::kItemSelectors);
    const bool settable =
        (selector >= bridge::kSelectCreated && selector <= bridge::kSelectModified) ||
        (selector >= bridge::kSelectOwner && selector <= bridge::kSelectEveryoneRights);
    if (!settable) {
        slib::Throw(slib::kBadParameter, "Wrong attribute name");
    }
    if (fmlib::DataVectSize(call.args) < 3) {
        slib::Throw(slib::kBadParameter, "Not enough parameters");
    }
    if (selector <= bridge::kSelectModified) {
        slib::RequireUsableNewItem(path);  // a date creates the file where nothing is
    }
    slib::FileManager().setAttribute(path, static_cast<uint32_t>(selector),
                                     *NewValue(call.args, selector));
}

void Set(const fmlib::FunctionCall& call) {
    switch (fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 0), kOwnSelectors)) {
        case kConvert:
            StageConvert(fmlib::ExprEnvSessionID(call.env), call.args);
            return;
        case kRotate:
            bridge::StagedPictureOptions::Set(fmlib::ExprEnvSessionID(call.env), u"exif-rotate", 1);
            return;
        default:
            SetItemAttribute(call);
            return;
    }
}

}  // namespace

FmxErrcode VFile_Set(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                     FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{2, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Set);
}
