#include "Decompression.h"

#include <zlib.h>
#include <zstd.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>

namespace tintwork::importing {

namespace {

// Output is kept in memory only up to this size; past it a first pass just measures,
// so that a bomb is refused without holding what it inflated to.
constexpr std::size_t directOutputLimit = std::size_t{32} << 20;
// DEFLATE cannot expand data more than about 1032 times; Kiwi data expands a few times.
// Past this ratio (and a floor for small inputs) a stream is taken for a bomb.
constexpr std::size_t maxDeflateRatio = 128;
constexpr std::size_t deflateRatioFloor = std::size_t{16} << 20;

constexpr std::size_t outputChunk = std::size_t{1} << 17;

// Receives decompressed pieces; false stops the decompressor.
using Sink = std::function<bool(const char*, std::size_t)>;
// Runs a decompressor over its whole input into the sink. Returns false with a
// description on a failure; a stop by the sink is no failure.
using Decompressor = std::function<bool(std::string_view, const Sink&, std::string&)>;

bool runInflate(std::string_view input, const Sink& sink, std::string& error) {
    z_stream stream{};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {
        error = "cannot start inflating";
        return false;
    }
    std::unique_ptr<z_stream, int (*)(z_stream*)> cleanup(&stream, inflateEnd);
    std::array<char, outputChunk> buffer{};
    // zlib counts in 32-bit units; feed the input in pieces it can hold.
    std::size_t consumed = 0;
    for (;;) {
        if (stream.avail_in == 0 && consumed < input.size()) {
            const std::size_t piece = std::min<std::size_t>(input.size() - consumed, 1u << 30);
            stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data() + consumed));
            stream.avail_in = static_cast<uInt>(piece);
            consumed += piece;
        }
        stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
        stream.avail_out = static_cast<uInt>(buffer.size());
        const int status = inflate(&stream, Z_NO_FLUSH);
        const std::size_t produced = buffer.size() - stream.avail_out;
        if (produced > 0 && !sink(buffer.data(), produced)) {
            return true;
        }
        if (status == Z_STREAM_END) {
            return true;
        }
        if (status == Z_BUF_ERROR && stream.avail_in == 0 && consumed == input.size()) {
            error = "unexpected end of compressed data";
            return false;
        }
        if (status != Z_OK && status != Z_BUF_ERROR) {
            error = stream.msg != nullptr ? stream.msg : zError(status);
            return false;
        }
    }
}

bool runZstd(std::string_view input, const Sink& sink, std::string& error) {
    std::unique_ptr<ZSTD_DStream, std::size_t (*)(ZSTD_DStream*)> stream(ZSTD_createDStream(), ZSTD_freeDStream);
    if (!stream) {
        error = "cannot start decompressing";
        return false;
    }
    std::array<char, outputChunk> buffer{};
    ZSTD_inBuffer in{input.data(), input.size(), 0};
    std::size_t lastResult = 1;
    for (;;) {
        ZSTD_outBuffer out{buffer.data(), buffer.size(), 0};
        lastResult = ZSTD_decompressStream(stream.get(), &out, &in);
        if (ZSTD_isError(lastResult) != 0) {
            error = ZSTD_getErrorName(lastResult);
            return false;
        }
        if (out.pos > 0 && !sink(buffer.data(), out.pos)) {
            return true;
        }
        // All input read and the output not full: nothing more is coming.
        if (in.pos == in.size && out.pos < out.size) {
            break;
        }
    }
    if (lastResult != 0) {
        error = "unexpected end of compressed data";
        return false;
    }
    return true;
}

Decompressed decompressBounded(std::string_view input, const Decompressor& decompressor, std::size_t limit) {
    Decompressed result;
    std::string output;
    std::size_t total = 0;
    bool measuring = false;
    const Sink firstPass = [&](const char* data, std::size_t size) {
        total += size;
        if (total > limit) {
            result.tooLarge = true;
            return false;
        }
        if (!measuring && output.size() + size > directOutputLimit) {
            measuring = true;
            std::string().swap(output);
        }
        if (!measuring) {
            output.append(data, size);
        }
        return true;
    };
    if (!decompressor(input, firstPass, result.error)) {
        return result;
    }
    if (result.tooLarge) {
        return result;
    }
    if (measuring) {
        output.reserve(total);
        const Sink secondPass = [&](const char* data, std::size_t size) {
            output.append(data, std::min(size, total - output.size()));
            return output.size() < total;
        };
        if (!decompressor(input, secondPass, result.error)) {
            return result;
        }
    }
    result.bytes = std::move(output);
    return result;
}

}  // namespace

Decompressed inflateRaw(std::string_view input) {
    const std::size_t ratioBound = std::max(deflateRatioFloor, input.size() * maxDeflateRatio);
    return decompressBounded(input, runInflate, std::min(maxDecompressedSize, ratioBound));
}

Decompressed decompressZstd(std::string_view input) {
    const unsigned long long declared = ZSTD_getFrameContentSize(input.data(), input.size());
    if (declared != ZSTD_CONTENTSIZE_UNKNOWN && declared != ZSTD_CONTENTSIZE_ERROR && declared > maxDecompressedSize) {
        Decompressed result;
        result.tooLarge = true;
        return result;
    }
    return decompressBounded(input, runZstd, maxDecompressedSize);
}

}  // namespace tintwork::importing
