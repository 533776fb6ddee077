// SPDX-License-Identifier: GPL-3.0-or-later
#include "Output.h"

#include <cstdio>

namespace
{
void printTo(FILE *stream, const QString &line)
{
    const QByteArray bytes = line.toLocal8Bit() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}
} // namespace

void printLine(const QString &line)
{
    printTo(stdout, line);
}

void printError(const QString &line)
{
    printTo(stderr, line);
}
