// VFile_Choose( itemKind { ; name ; value } ... ): lets the user pick files, a folder or a new
// file's name in the system's dialogs and answers the paths, one per line (carriage returns),
// or the text "-128" when the user cancels. The options are "title", "folder" and "extensions"
// (foundation/choose_options.h).
#include <memory>
#include <string>
#include <vector>

#include "bridge/item_kinds.h"
#include "bridge/path_context.h"
#include "foundation/choose_options.h"
#include "foundation/file_manager.h"
#include "functions/handlers.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/keyword_lookup.h"
#include "shell/result.h"
#include "shell/value_conversion.h"

namespace {

std::vector<std::u16string> OptionTexts(const FmxDataVect& args) {
    std::vector<std::u16string> texts;
    for (uint32_t at = 1; at < fmlib::DataVectSize(args); ++at) {
        texts.push_back(fmlib::ToFoundationString(fmlib::DataVectAtAsText(args, at))->units());
    }
    return texts;
}

void Choose(const fmlib::FunctionCall& call) {
    int32_t kind =
        fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 0), bridge::kItemKindKeywords);
    // "files" and "folders" are "file" and "folder" with several items allowed.
    const bool several = kind == slib::CreateKind::kFiles || kind == slib::CreateKind::kFolders;
    if (several) {
        kind -= 3;
    }

    const slib::ChooseOptions options = slib::ParseChooseOptions(OptionTexts(call.args));
    std::shared_ptr<const slib::String> folder;
    if (options.folderValue) {
        bridge::PathContext paths(call.env);
        const auto argument = static_cast<uint32_t>(*options.folderValue + 1);
        folder = std::make_shared<const slib::String>(paths.pathArgument(call.args, argument));
    }
    std::shared_ptr<const slib::String> title;
    if (options.title) {
        title = std::make_shared<const slib::String>(*options.title);
    }
    std::vector<std::shared_ptr<const slib::String>> extensions;
    for (const std::u16string& extension : options.extensions) {
        extensions.push_back(std::make_shared<const slib::String>(extension));
    }

    const auto chosen = slib::FileManager().choose(kind, several, folder, title, extensions);
    std::u16string joined;
    for (size_t at = 0; at < chosen.size(); ++at) {
        joined += at == 0 ? u"" : u"\r";
        joined += chosen[at]->units();
    }
    fmlib::SetResultText(call.result, joined);
}

}  // namespace

FmxErrcode VFile_Choose(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                        FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{1, fmlib::Licence::kChecked, fmlib::ZeroCode::kLeftAlone};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Choose);
}
