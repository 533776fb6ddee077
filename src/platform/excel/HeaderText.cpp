// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/HeaderText.h"

namespace excel
{

namespace
{
constexpr QStringView Codes = u"LCR";
}

QString joinedHeader(const std::array<QString, 3> &parts)
{
    QString header;
    for (std::size_t part = 0; part < parts.size(); ++part) {
        if (!parts[part].isEmpty()) {
            header += u'&';
            header += Codes[static_cast<qsizetype>(part)];
            header += parts[part];
        }
    }
    return header;
}

std::array<QString, 3> splitHeader(const QString &header)
{
    std::array<QString, 3> parts;
    std::size_t part = 1;
    for (qsizetype at = 0; at < header.size(); ++at) {
        const bool isCode = header[at] == u'&' && at + 1 < header.size();
        const qsizetype found = isCode ? Codes.indexOf(header[at + 1].toUpper()) : -1;
        if (found >= 0) {
            part = static_cast<std::size_t>(found);
            ++at;
        } else {
            parts[part] += header[at];
            // "&&" is a literal ampersand, not a code.
            if (isCode) {
                parts[part] += header[++at];
            }
        }
    }
    return parts;
}

} // namespace excel
