#pragma once

#include "support/files.h"
#include "support/testing.h"

// What the tests of copying and of replacing a file share.

constexpr int kBlock = 1024 * 1024;

using Files = QMap<QString, QByteArray>;

inline QByteArray pattern(int size) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[i] = char((i * 31 + i / 251) & 0xff);
    return bytes;
}

/// A folder with these files.
struct Folder : PcFolder
{
    explicit Folder(const Files &files) {
        for (auto file = files.cbegin(); file != files.cend(); ++file)
            addFile(file.key(), file.value());
    }
    Files now() const { return contentBelow(path()); }
};
