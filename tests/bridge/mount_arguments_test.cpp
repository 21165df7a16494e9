// VFile_Mount's arguments mean different things by their count.
#include "bridge/mount_arguments.h"
#include "bridge_fixture.h"
#include "fmhost/host_objects.h"
#include "fmx_constants.h"

namespace bridge_test {
namespace {

using fmhost::driver::Checked;

using DataVectPtr =
    std::unique_ptr<FmxDataVect, fmhost::driver::HostDeleter<FmxDataVect, FM_DataVect_Delete>>;
using LocalePtr =
    std::unique_ptr<FmxLocale, fmhost::driver::HostDeleter<FmxLocale, FM_Locale_Delete>>;

// A host argument list of texts, as a calculation would pass them.
DataVectPtr TextArguments(const std::vector<std::u16string>& texts) {
    DataVectPtr args(Checked([](FmxErr& err) { return FM_DataVect_Constructor1(err); }));
    const LocalePtr locale(
        Checked([](FmxErr& err) { return FM_Locale_Constructor1(fmx::kLocaleSystem, err); }));
    for (const std::u16string& text : texts) {
        const fmhost::driver::DataPtr data(
            Checked([](FmxErr& err) { return FM_Data_Constructor1(err); }));
        const fmhost::driver::TextPtr value = fmhost::driver::MakeText(text);
        Checked([&](FmxErr& err) {
            return FM_Data_SetAsText(data.get(), *value, *locale, fmx::kDTText, err);
        });
        Checked([&](FmxErr& err) { FM_DataVect_PushBack(args.get(), *data, err); });
    }
    return args;
}

std::string Shown(const std::shared_ptr<const slib::String>& value) {
    return value ? "\"" + value->toUtf8() + "\"" : "null";
}

std::string Read(const std::vector<std::u16string>& texts) {
    const DataVectPtr args = TextArguments(texts);
    const bridge::MountArguments read = bridge::ReadMountArguments(*args);
    return Shown(read.url) + " " + Shown(read.mountPath) + " " + Shown(read.user) + " " +
           Shown(read.password);
}

class MountArguments : public BridgeTest {};

TEST_F(MountArguments, AreReadByTheirCountAndNeedAUrl) {
    EXPECT_EQ(Read({u"smb://s/x"}), "\"smb://s/x\" null null null");
    EXPECT_EQ(Read({u"smb://s/x", u"Q:"}), "\"smb://s/x\" \"Q:\" null null");
    EXPECT_EQ(Read({u"smb://s/x", u"me", u"secret"}), "\"smb://s/x\" null \"me\" \"secret\"");
    EXPECT_EQ(Read({u"smb://s/x", u"Q:", u"me", u"secret"}),
              "\"smb://s/x\" \"Q:\" \"me\" \"secret\"");
    EXPECT_EQ(Read({u"smb://s/x", u"Q:", u"me", u"secret", u"more"}),
              "\"smb://s/x\" \"Q:\" \"me\" \"secret\"");
    // An empty text is a value, not an absent one.
    EXPECT_EQ(Read({u"smb://s/x", u""}), "\"smb://s/x\" \"\" null null");
    EXPECT_EQ(FailureOf([] { Read({}); }), "-50 No URL to mount");
}

}  // namespace
}  // namespace bridge_test
