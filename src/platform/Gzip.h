#pragma once

#include <QByteArray>

// The bytes as one gzip member (RFC 1952): what gzip -d and zcat read back. Members written one
// after the other form one valid gzip file.
QByteArray GzipMember(const QByteArray& data);
