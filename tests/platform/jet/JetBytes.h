// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/jet/Bytes.h"
#include "platform/jet/Header.h"
#include "platform/jet/Rc4.h"

#include <QByteArray>
#include <QtEndian>

#include <array>
#include <span>

/// Jet files in memory, looked at and changed byte by byte, apart from the reader under test.
namespace bytes
{

constexpr int PageSize = 4096;

inline jet::Bytes view(const QByteArray &all)
{
    return {reinterpret_cast<const unsigned char *>(all.constData()), static_cast<std::size_t>(all.size())};
}

template <typename Number> Number number(const QByteArray &file, int page, int offset)
{
    return qFromLittleEndian<Number>(file.constData() + page * PageSize + offset);
}

template <typename Number> void setNumber(QByteArray &file, int page, int offset, Number value)
{
    qToLittleEndian<Number>(value, file.data() + page * PageSize + offset);
}

/// The first definition with that count of rows.
inline int definitionPage(const QByteArray &file, quint32 rowCount)
{
    for (int page = 0; page < file.size() / PageSize; ++page) {
        if (file[page * PageSize] == 2 && number<quint32>(file, page, 16) == rowCount) {
            return page;
        }
    }
    qFatal("no such definition");
}

/// The first page of rows of a definition.
inline int dataPage(const QByteArray &file, int definition)
{
    for (int page = 1; page < file.size() / PageSize; ++page) {
        if (file[page * PageSize] == 1 && number<quint32>(file, page, 4) == static_cast<quint32>(definition)) {
            return page;
        }
    }
    qFatal("no such page");
}

inline int slotOffset(int slot)
{
    return 14 + 2 * slot;
}

inline void mask(QByteArray &file, std::array<unsigned char, 4> key, int from, int length)
{
    jet::applyRc4(key, std::span(reinterpret_cast<unsigned char *>(file.data()) + from, static_cast<std::size_t>(length)));
}

/// Changes the masked part of the first page; offsets are the page's.
template <typename Change> void changeHeader(QByteArray &file, Change &&change)
{
    constexpr std::array<unsigned char, 4> Key{0xC7, 0xDA, 0x39, 0x6B};
    mask(file, Key, 0x18, 0x80);
    change(file);
    mask(file, Key, 0x18, 0x80);
}

/// The file with all pages but the first encoded.
inline QByteArray encoded(QByteArray file, quint32 key)
{
    changeHeader(file, [&](QByteArray &bytes) { setNumber<quint32>(bytes, 0, 0x3E, key); });
    for (int page = 1; page < file.size() / PageSize; ++page) {
        std::array<unsigned char, 4> pageKey;
        qToLittleEndian<quint32>(key ^ static_cast<quint32>(page), pageKey.data());
        mask(file, pageKey, page * PageSize, PageSize);
    }
    return file;
}

} // namespace bytes
