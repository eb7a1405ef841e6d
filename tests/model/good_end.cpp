#include "model/good_end.h"

#include "model/modelled_applications.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using platform::ActivationResult;
using records::BlockedApplication;

namespace
{

/** Nothing else of the model stands there. */
const QString path = u"/Applications/Last.app"_s;

} // namespace

QString GoodEnd::broken()
{
    m_world.answers().recover();
    for (const auto part : {&GoodEnd::settles, &GoodEnd::switchesOn, &GoodEnd::adds,
             &GoodEnd::takesIn, &GoodEnd::removes, &GoodEnd::switchesOff, &GoodEnd::startsAgain}) {
        if (QString broken = (this->*part)(); !broken.isEmpty())
            return broken;
    }
    return {};
}

QString GoodEnd::settles()
{
    QString broken = m_world.rested();
    return broken.isEmpty() ? m_world.brokenRules() : broken;
}

QString GoodEnd::switchesOn()
{
    m_world.run().switchProtection(true);
    return activated();
}

QString GoodEnd::adds()
{
    m_world.bundles().put(path, u"com.example.last"_s);
    m_world.run().drop(path);
    QString broken = activated();
    return broken.isEmpty() && !added() ? u"a good drop was not listed"_s : broken;
}

QString GoodEnd::takesIn()
{
    auto process = sampleProcess(u"com.example.last.helper"_s, u"TEAM"_s,
        inspection::referenceSeconds(m_world.system().scheduler.now()));
    process.executablePath = path + u"/Contents/helper"_s;
    observe(m_world.system(), m_world.observed(), {process});
    QString broken = blocked();
    const QList<records::CodeIdentity> helper{{process.signingIdentifier, process.teamIdentifier}};
    return broken.isEmpty() && added()->auxiliaryCodeIdentities != helper
        ? u"a helper was not taken in"_s
        : broken;
}

QString GoodEnd::removes()
{
    m_world.remove(*added());
    QString broken = blocked();
    return broken.isEmpty() && added() ? u"a removal left the record"_s : broken;
}

QString GoodEnd::switchesOff()
{
    m_world.run().switchProtection(false);
    QString broken = m_world.rested();
    const bool isOn
        = m_world.store().isProtectionEnabled() || m_world.system().filterManager.stored.enabled;
    return broken.isEmpty() && isOn ? u"on after being switched off"_s : broken;
}

QString GoodEnd::startsAgain()
{
    auto list = m_world.store().applications();
    list.removeIf(isOurOwn);
    QString broken = m_world.startAgain();
    if (broken.isEmpty())
        broken = m_world.rested();
    return broken.isEmpty() && m_world.store().applications() != list
        ? u"another list after a new start"_s
        : broken;
}

/** What follows from a wish for protection, once the system has activated the extension. */
QString GoodEnd::activated()
{
    const auto &extensions = m_world.system().systemExtensions;
    if (QString broken = m_world.rested(); !broken.isEmpty())
        return broken;
    if (extensions.isOutstanding())
        extensions.delegate()->requestDidFinish(ActivationResult::Completed);
    return blocked();
}

/** The filter blocks just what is listed. */
QString GoodEnd::blocked()
{
    if (QString broken = m_world.rested(); !broken.isEmpty())
        return broken;
    if (!m_world.store().isProtectionEnabled())
        return u"not enabled after a good activation"_s;
    return m_world.storedRules() == expectedRules(m_world.store().applications())
        ? QString()
        : u"the filter's rules are not those of the list"_s;
}

std::optional<BlockedApplication> GoodEnd::added() const
{
    const auto &list = m_world.store().applications();
    const auto found = std::ranges::find(list, path, &BlockedApplication::path);
    return found == list.cend() ? std::nullopt : std::optional(*found);
}

} // namespace zorvane::tests
