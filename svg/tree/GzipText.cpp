#include "svg/tree/GzipText.h"

#include <zlib.h>

namespace tzsvg {
namespace {

// Owns the state of an inflation.
class Inflater {
  public:
    Inflater() : ready_(inflateInit2(&stream_, MAX_WBITS + kGzipOnly) == Z_OK) {}
    ~Inflater() {
        if (ready_) inflateEnd(&stream_);
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    bool ready() const { return ready_; }
    z_stream* operator->() { return &stream_; }
    z_stream* get() { return &stream_; }

  private:
    static constexpr int kGzipOnly = 16;

    z_stream stream_ = {};
    bool ready_;
};

}  // namespace

bool isCompressedName(const QString& fileName) {
    return fileName.endsWith(QLatin1String(".svgz"), Qt::CaseInsensitive) ||
           fileName.endsWith(QLatin1String(".svg.gz"), Qt::CaseInsensitive);
}

std::optional<QByteArray> unpackGzip(const QByteArray& packed, qint64 limit) {
    constexpr int kChunk = 1 << 16;
    Inflater inflater;
    if (!inflater.ready()) return std::nullopt;
    QByteArray input = packed;  // zlib wants its input writable
    inflater->next_in = reinterpret_cast<Bytef*>(input.data());
    inflater->avail_in = static_cast<uInt>(input.size());
    QByteArray unpacked;
    QByteArray chunk(kChunk, Qt::Uninitialized);
    while (true) {
        inflater->next_out = reinterpret_cast<Bytef*>(chunk.data());
        inflater->avail_out = kChunk;
        const int result = inflate(inflater.get(), Z_NO_FLUSH);
        const bool atEnd = result == Z_BUF_ERROR && inflater->avail_in == 0;  // nothing more to unpack
        if (result != Z_OK && result != Z_STREAM_END && !atEnd) return std::nullopt;
        unpacked.append(chunk.constData(), kChunk - static_cast<int>(inflater->avail_out));
        if (unpacked.size() > limit) return std::nullopt;
        if (atEnd) return unpacked;
        if (result == Z_STREAM_END) {
            if (inflater->avail_in == 0) return unpacked;
            if (inflateReset(inflater.get()) != Z_OK) return std::nullopt;
        }
    }
}

}  // namespace tzsvg
