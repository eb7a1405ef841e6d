#pragma once

#include <QVariant>

namespace zorvane::platform::simulated
{

/**
 * Reads the old text form of property lists: "quoted" and bare texts, <hexadecimal> data,
 * ( arrays ), { dictionaries; }, with C comments between them. A text that is a dictionary's
 * content without its braces is a strings table; "key;" in one stands for "key = key;". An empty
 * text is an empty table. Every text is a QString, the rest as in readPropertyList(). Invalid if
 * the text is none of these. Pure; any thread.
 */
[[nodiscard]] QVariant readOldStylePropertyList(QStringView text);

} // namespace zorvane::platform::simulated
