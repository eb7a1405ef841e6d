#pragma once

#include "ui/window_fixture.h"

/**
 * @file
 * Applications for the list of a test.
 */
namespace zorvane::tests
{

using namespace Qt::StringLiterals;

inline const SampleApplication atlas{
    u"Atlas"_s, u"org.example.atlas"_s, u"7QK2M4X9TP"_s, std::nullopt};
inline const SampleApplication quill{
    u"Quill"_s, u"org.example.quill"_s, std::nullopt, std::nullopt};

/** One of this name, by the developer whose processes are observed. */
inline SampleApplication sample(const QString &name)
{
    return {name, u"org.example."_s + name.toLower(), u"TEAM123456"_s, std::nullopt};
}

/** From "App 00" on, in order. */
inline QList<SampleApplication> manySamples(int count)
{
    QList<SampleApplication> result;
    for (int number = 0; number < count; ++number)
        result.append(sample(u"App %1"_s.arg(number, 2, 10, QChar(u'0'))));
    return result;
}

} // namespace zorvane::tests
