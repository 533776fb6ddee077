// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Copying and checking an open file; Database documents the operations.
namespace dao
{

class Engine;

void copyFile(Engine &engine, const QString &path);
QStringList checkIntegrity(Engine &engine, const std::function<void(int percent)> &progress);
QStringList checkPages(Engine &engine);

} // namespace dao
