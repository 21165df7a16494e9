#pragma once
// slib::Path: one native Windows path (backslash separators), parsed from the text forms a user
// may type and formatted back into the text forms results are given in.

#include <memory>
#include <string>

#include "foundation/object.h"
#include "foundation/path_system.h"

namespace slib {

// Output styles of Path::format. The low four bits pick the form; kRelative asks for the path
// relative to the anchor.
struct PathStyle {
    static constexpr int kNative = 0;   // C:\Data\a.txt
    static constexpr int kUnix = 1;     // /Data/a.txt (the anchor's drive dropped)
    static constexpr int kWindows = 2;  // C:\Data\a.txt
    static constexpr int kUrl = 4;      // file://C:/Data/a.txt
    static constexpr int kShort = 5;    // C:\PROGRA~1\a.txt
    static constexpr int kHost = 7;     // file:/C:/Data/a.txt, folders end with "/"
    static constexpr int kRelative = 0x10;
};

class Path : public Object {
  public:
    // Marks an anchor that is no folder at all: relative paths cannot be resolved against it.
    static constexpr const char16_t* kDefaultAnchor = u"DEFAULT_ANCHOR";

    // The process's current directory (Windows build only).
    Path() : Path(DefaultPathSystem().currentDirectory()) {}
    // Holds `text` verbatim, without any parsing.
    explicit Path(std::u16string text) : text_(std::move(text)) {}

    // Resolves user text against `anchor` into the normal form of NormalizePath:
    //   "~..."           the profile folder followed by the rest
    //   then, with every "/" read as "\":
    //   "fsspec:..."     a short path, expanded to its long form (empty path if that fails)
    //   "file://..."     the URL form: "file://C:/x", "file:///C:/x", "file:////server/share/x"
    //                    and "file://server/share/x" (a UNC path)
    //   "C:\...", "\\server\share\...", "\\?\..."   absolute: taken as they are
    //   "\..."           on the anchor's drive or share (drive C: without an anchor)
    //   "C:name"         below the anchor when it lies on that drive, else below the drive's root
    //   anything else    relative ("." included): below the anchor; its ".." never climbs out.
    // A relative path against kDefaultAnchor throws -50 "Relative paths are not supported in
    // Webdirect.".
    static std::shared_ptr<Path> Parse(const std::u16string& text, const Path& anchor,
                                       const PathSystem& system = DefaultPathSystem());

    // Text of the path in one of the PathStyle forms; unknown styles give the native form. Every
    // style but kNative and kHost drops one trailing "/" and then one trailing "\" from results
    // longer than three characters, so a root such as "C:\" keeps its separator.
    // Each form parses back (with the same anchor) to the same item: kUnix drops the drive only
    // where it is the anchor's (C: without one); kHost gives "file://server/share/..." for UNC.
    // Relative styles give "." for the anchor itself, the text below the anchor for paths inside
    // it (compared without regard to case; ".\" before a name starting with "~"), and the full
    // path in the same separator form for paths outside it or when the anchor is kDefaultAnchor.
    std::shared_ptr<const String> format(int style, const Path& anchor,
                                         const PathSystem& system = DefaultPathSystem()) const;

    const std::u16string& text() const { return text_; }
    bool isDefaultAnchor() const { return text_ == kDefaultAnchor; }

    // The native text.
    std::shared_ptr<const String> description() const override;

  private:
    std::u16string text_;
};

}  // namespace slib
