#pragma once

#include "filter/controller_fixture.h"
#include "model/expected_filter.h"

namespace zorvane::tests
{

/** Rules as they may be handed over, and as they have to be kept. */
struct HandedRules {
    Rules handed;
    Rules kept;
};

/** Each of the four lowest bits of @p number is a rule. */
inline HandedRules handedRules(int number)
{
    const QString own = records::identityKey(
        {QStringLiteral("dev.kestrelworks.Zorvane.tool"), QStringLiteral("TEAM")});
    HandedRules rules;
    for (int bit = 0; bit < 4; ++bit) {
        if ((number & (1 << bit)) == 0)
            continue;
        const QString key = testKey(QStringLiteral("com.example.%1").arg(bit));
        const QString path = QStringLiteral("/Applications/%1.app").arg(bit);
        rules.handed.keys << own << key << QStringLiteral("nonsense") << key;
        rules.handed.paths << QStringLiteral("/Applications/./%1.app").arg(bit) << path
                           << QStringLiteral("/tmp/tool");
        rules.kept.keys << key;
        rules.kept.paths << path;
    }
    return rules;
}

} // namespace zorvane::tests
