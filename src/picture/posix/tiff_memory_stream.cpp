#include "picture/posix/tiff_memory_stream.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <mutex>

namespace slib {
namespace {

// libtiff hands back the thandle_t it was given.
TiffMemoryStream& StreamOf(thandle_t handle) {
    return *static_cast<TiffMemoryStream*>(handle);
}

uint64_t StreamSize(const TiffMemoryStream& stream) {
    return stream.sink != nullptr ? stream.sink->size() : stream.sourceSize;
}

const uint8_t* StreamData(const TiffMemoryStream& stream) {
    return stream.sink != nullptr ? stream.sink->data() : stream.source;
}

tmsize_t ReadStream(thandle_t handle, void* out, tmsize_t length) {
    TiffMemoryStream& stream = StreamOf(handle);
    const uint64_t size = StreamSize(stream);
    if (length < 0 || stream.offset >= size) {
        return 0;
    }
    const uint64_t count = std::min<uint64_t>(static_cast<uint64_t>(length), size - stream.offset);
    std::memcpy(out, StreamData(stream) + stream.offset, static_cast<size_t>(count));
    stream.offset += count;
    return static_cast<tmsize_t>(count);
}

// Nothing may be thrown through libtiff: a failed allocation is a short write.
tmsize_t WriteStream(thandle_t handle, void* data, tmsize_t length) {
    TiffMemoryStream& stream = StreamOf(handle);
    if (stream.sink == nullptr || length < 0) {
        return -1;
    }
    const auto* bytes = static_cast<const uint8_t*>(data);
    try {
        const uint64_t end = stream.offset + static_cast<uint64_t>(length);
        if (end > stream.sink->size()) {
            stream.sink->resize(static_cast<size_t>(end));
        }
        std::copy(bytes, bytes + length,
                  stream.sink->begin() + static_cast<ptrdiff_t>(stream.offset));
        stream.offset = end;
    } catch (...) {
        return -1;
    }
    return length;
}

toff_t SeekStream(thandle_t handle, toff_t offset, int whence) {
    TiffMemoryStream& stream = StreamOf(handle);
    uint64_t base = 0;
    if (whence == SEEK_CUR) {
        base = stream.offset;
    } else if (whence == SEEK_END) {
        base = StreamSize(stream);
    }
    stream.offset = base + offset;
    return stream.offset;
}

int CloseStream(thandle_t) {
    return 0;
}

toff_t SizeOfStream(thandle_t handle) {
    return StreamSize(StreamOf(handle));
}

// Reading straight from the caller's bytes spares libtiff a copy of every strip.
int MapStream(thandle_t handle, void** base, toff_t* size) {
    TiffMemoryStream& stream = StreamOf(handle);
    if (stream.sink != nullptr) {
        return 0;
    }
    *base = const_cast<uint8_t*>(stream.source);
    *size = stream.sourceSize;
    return 1;
}

void UnmapStream(thandle_t, void*, toff_t) {}

int OnTiffError(TIFF*, void* user, const char*, const char*, va_list) {
    static_cast<TiffMemoryStream*>(user)->failed = true;
    return 1;  // handled: libtiff prints nothing
}

int OnTiffWarning(TIFF*, void*, const char*, const char*, va_list) {
    return 1;
}

// The handlers of the few messages libtiff sends before it has a file of its own (an allocation
// failing in the open itself) would print to stderr: they are silenced once for the process. The
// plug-in's libtiff is its own static copy, so the host's is untouched.
void SilenceGlobalHandlers() {
    static std::once_flag once;
    std::call_once(once, [] {
        TIFFSetErrorHandler(nullptr);
        TIFFSetWarningHandler(nullptr);
    });
}

void FreeOptions(TIFFOpenOptions* options) {
    TIFFOpenOptionsFree(options);
}
using TiffOptions = UniqueResource<TIFFOpenOptions*, &FreeOptions>;

}  // namespace

void CloseTiff(TIFF* tiff) {
    TIFFClose(tiff);
}

TiffOwner OpenTiffStream(TiffMemoryStream& stream, PictureBytes bytes, const char* mode,
                         uint64_t maxSingleAllocation) {
    SilenceGlobalHandlers();
    stream.source = bytes.data;
    stream.sourceSize = bytes.size;
    const TiffOptions options(TIFFOpenOptionsAlloc());
    if (!options) {
        return TiffOwner();
    }
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(maxSingleAllocation));
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &OnTiffError, &stream);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &OnTiffWarning, &stream);
    return TiffOwner(TIFFClientOpenExt("memory", mode, &stream, &ReadStream, &WriteStream,
                                       &SeekStream, &CloseStream, &SizeOfStream, &MapStream,
                                       &UnmapStream, options.get()));
}

}  // namespace slib
