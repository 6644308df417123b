#include "platform/ShiftJis.h"

#include <iconv.h>
#include <vector>

std::optional<QString> DecodeShiftJis(const QByteArray& bytes) {
    iconv_t converter = iconv_open("UTF-8", "CP932");
    if (converter == reinterpret_cast<iconv_t>(-1))
        return std::nullopt;
    std::vector<char> output(size_t(bytes.size()) * 2 + 16);
    char* in = const_cast<char*>(bytes.constData());
    size_t inLeft = size_t(bytes.size());
    char* out = output.data();
    size_t outLeft = output.size();
    const size_t result = iconv(converter, &in, &inLeft, &out, &outLeft);
    iconv_close(converter);
    if (result == size_t(-1))
        return std::nullopt;
    return QString::fromUtf8(output.data(), qsizetype(output.size() - outLeft));
}
