#include "data_views.h"

namespace fmwrapper {
namespace {

template <typename View>
View* Refreshed(std::unique_ptr<View>& view) {
    if (!view)
        view = std::make_unique<View>();
    return view.get();
}

}  // namespace

const FmxText* TextView(const FmxData& data) {
    FmxText* view = Refreshed(data.textView);
    view->text = data.value.AsText();
    return view;
}

const FmxFixPt* NumberView(const FmxData& data) {
    FmxFixPt* view = Refreshed(data.numberView);
    view->number = data.value.AsNumber();
    return view;
}

const FmxDateTime* DateView(const FmxData& data) {
    FmxDateTime* view = Refreshed(data.dateView);
    view->value = data.value.AsDate();
    return view;
}

const FmxDateTime* TimeView(const FmxData& data) {
    FmxDateTime* view = Refreshed(data.timeView);
    view->value = data.value.AsTime();
    return view;
}

const FmxDateTime* TimestampView(const FmxData& data) {
    FmxDateTime* view = Refreshed(data.timestampView);
    view->value = data.value.AsTimestamp();
    return view;
}

const FmxBinaryData* BinaryView(const FmxData& data) {
    FmxBinaryData* view = Refreshed(data.binaryView);
    view->container = data.value.AsContainer();
    return view;
}

const FmxLocale* LocaleView(const FmxData& data) {
    FmxLocale* view = Refreshed(data.localeView);
    view->type = data.value.Locale();
    return view;
}

}  // namespace fmwrapper
