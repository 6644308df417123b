#include "platform/Gzip.h"

#include <array>

namespace {

quint32 crc32(const QByteArray& data) {
    static const std::array<quint32, 256> table = [] {
        std::array<quint32, 256> entries{};
        for (quint32 n = 0; n < 256; ++n) {
            quint32 c = n;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            entries[n] = c;
        }
        return entries;
    }();
    quint32 crc = 0xFFFFFFFFu;
    for (const char byte : data)
        crc = table[(crc ^ quint8(byte)) & 0xFF] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFu;
}

void appendLittleEndian(QByteArray& out, quint32 value) {
    for (int shift = 0; shift < 32; shift += 8)
        out.append(char((value >> shift) & 0xFF));
}

} // namespace

QByteArray GzipMember(const QByteArray& data) {
    // qCompress gives the length (4 bytes), then a zlib stream: a 2-byte header, the deflate
    // data and a 4-byte Adler-32. gzip wants the same deflate data between its own header and
    // trailer.
    // Nothing compresses to the one empty final block.
    const qsizetype headerSize = 4 + 2, trailerSize = 4;
    const QByteArray zlib = data.isEmpty() ? QByteArray() : qCompress(data, 9);
    QByteArray out("\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03", 10);
    if (zlib.size() > headerSize + trailerSize)
        out.append(zlib.constData() + headerSize, zlib.size() - headerSize - trailerSize);
    else
        out.append("\x03\x00", 2);
    appendLittleEndian(out, crc32(data));
    appendLittleEndian(out, quint32(data.size() & 0xFFFFFFFF));
    return out;
}
