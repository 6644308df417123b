#include "platform/Gzip.h"

#include "platform/Failure.h"

#include <zlib.h>

QByteArray GzipMember(const QByteArray& data) {
    z_stream stream{};
    // A window of 15 bits plus 16 asks zlib for the gzip header and trailer (CRC-32, length).
    constexpr int gzipWindow = 15 + 16;
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipWindow, 8, Z_DEFAULT_STRATEGY) !=
        Z_OK)
        throw Failure(7, QStringLiteral("メモリが不足しています。"));
    QByteArray out(qsizetype(deflateBound(&stream, uLong(data.size()))) + 32, Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
    stream.avail_in = uInt(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = uInt(out.size());
    const int result = deflate(&stream, Z_FINISH);
    const qsizetype written = qsizetype(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END)
        throw Failure(7, QStringLiteral("メモリが不足しています。"));
    out.truncate(written);
    return out;
}
