#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace zorvane::tests
{

/** What a short program prints when it is given @p input; a failure of it ends the test. It works
 * in @p folder, if one is given. */
[[nodiscard]] QByteArray programOutput(const QString &program, const QStringList &arguments,
    const QByteArray &input = {}, const QString &folder = {});

} // namespace zorvane::tests
