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
    return position;
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

std::optional<Failure> run(const ModelKind &kind, quint32 seed, const QList<Step> &steps)
{
    const auto model = kind.make(seed);
    for (qsizetype i = 0; i < steps.size(); ++i) {
        if (const QString broken = model->perform(steps.at(i)); !broken.isEmpty())
            return Failure{i, broken};
    }
    if (const QString broken = model->finish(); !broken.isEmpty())
        return Failure{steps.size(), broken};
    return std::nullopt;
}

QList<Step> shrunk(const ModelKind &kind, quint32 seed, const QList<Step> &steps)
{
    QList<Step> left = steps;
    qsizetype chunk = left.size();
    while (chunk > 0) {
        bool removed = false;
        for (qsizetype at = 0; at < left.size();) {
            QList<Step> fewer = left;
            fewer.remove(at, std::min(chunk, left.size() - at));
            if (run(kind, seed, fewer)) {
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

QString text(const ModelKind &kind, const QList<Step> &steps)
{
    QStringList lines;
    for (const Step &step : steps)
        lines.append(u"%1 %2"_s.arg(kind.actions.at(step.action).name).arg(step.number));
    return lines.join(u'\n');
}

} // namespace zorvane::tests
