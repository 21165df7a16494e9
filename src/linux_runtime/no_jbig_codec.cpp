// libtiff's JBIG codec would link JBIG-KIT into the plug-in, and JBIG-KIT is under the GPL. This
// stands in for the codec's entry in libtiff's codec table: linked before libtiff.a, it keeps
// that archive's JBIG member and JBIG-KIT out, and a JBIG-compressed TIFF is one with a codec
// libtiff lacks ("Picture data is damaged"). Every other TIFF compression is untouched.
#include <tiffio.h>

extern "C" __attribute__((visibility("hidden"))) int TIFFInitJBIG(TIFF* tiff, int) {
    TIFFErrorExtR(tiff, "JBIG", "JBIG compression is not available");
    return 0;
}
