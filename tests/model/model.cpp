#include "model/model.h"

#include <algorithm>
#include <QRandomGenerator>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

constexpr int mostNumbers = 1 << 16;

int anyAction(const ModelKind &kind, QRandomGenerator &random)
{
    int sum = 0;
    for (const Action &action : kind.actions)
        sum += action.weight;
    int left = int(random.bounded(quint32(sum)));
    int position = 0;
    while (left >= kind.actions.at(position).weight)
        left -= kind.actions.at(position++).weight;
    return kind.actions.at(position).kind;
}

/** What broke, however often it had gone well before. */
QString withoutNumbers(QString broken)
{
    return broken.removeIf([](QChar each) { return each.isDigit(); });
}

} // namespace

QList<Step> script(const ModelKind &kind, quint32 seed, qsizetype count)
{
    QRandomGenerator random(seed);
    QList<Step> steps;
    steps.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const int action = anyAction(kind, random);
        steps.append({action, int(random.bounded(mostNumbers))});
    }
    return steps;
}

Outcome run(const ModelKind &kind, quint32 seed, const QList<Step> &steps)
{
    const auto model = kind.make(seed);
    QString broken;
    for (auto step = steps.begin(); step != steps.end() && broken.isEmpty(); ++step)
        broken = model->perform(*step);
    if (broken.isEmpty())
        broken = model->finish();
    return {broken, model->happened()};
}

QList<Step> shrunk(const ModelKind &kind, quint32 seed, const QList<Step> &steps)
{
    const QString broken = withoutNumbers(run(kind, seed, steps).broken);
    QList<Step> left = steps;
    qsizetype chunk = left.size();
    while (chunk > 0) {
        bool removed = false;
        for (qsizetype at = 0; at < left.size();) {
            QList<Step> fewer = left;
            fewer.remove(at, std::min(chunk, left.size() - at));
            if (withoutNumbers(run(kind, seed, fewer).broken) == broken) {
                left = std::move(fewer);
                removed = true;
            } else {
                at += chunk;
            }
        }
        if (chunk > 1 || !removed)
            chunk /= 2;
    }
    return left;
}

QString nameOf(const ModelKind &kind, const Step &step)
{
    const auto found = std::ranges::find(kind.actions, step.action, &Action::kind);
    return found != kind.actions.cend() ? found->name : QString::number(step.action);
}

QString text(const ModelKind &kind, const QList<Step> &steps)
{
    QStringList lines;
    for (const Step &step : steps)
        lines.append(u"%1 %2"_s.arg(nameOf(kind, step)).arg(step.number));
    return lines.join(u'\n');
}

} // namespace zorvane::tests
