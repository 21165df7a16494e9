// Debian's static codec archives (libjpeg, libpng, libtiff, libzstd) were compiled for position-
// independent executables: they reach glibc's `stderr` PC-relative, which a shared object cannot
// resolve against another library. A hidden `stderr` inside the plug-in satisfies them; it holds
// glibc's own standard error stream, the one glibc's `stderr` starts as. (The codecs' messages
// are silenced anyway; nothing should ever print through it.)
extern "C" {
struct _IO_FILE;
extern struct _IO_FILE _IO_2_1_stderr_;
__attribute__((visibility("hidden"))) _IO_FILE* stderr = &_IO_2_1_stderr_;
}
