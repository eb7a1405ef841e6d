#pragma once

#include <functional>
#include <memory>
#include <QList>
#include <QMap>
#include <QString>

namespace zorvane::tests
{

/** One thing that happens: an action of the model, and a number that says to what or how. */
struct Step {
    int action = 0;
    int number = 0;
};

/** An action that a model knows, and how often it is to happen beside the others. */
struct Action {
    /** What its steps carry. */
    int kind = 0;
    QString name;
    int weight = 1;
};

/** What is wrong if a step carries what its model does not know. */
inline const QString unknownAction = QStringLiteral("nobody knows this action");

/** Events by name, and how often each happened. */
using Counts = QMap<QString, int>;

/** A small world that random steps happen to. Every step has a meaning in every state, so that a
 * script of steps stays one when some are left out. */
class Model
{
public:
    virtual ~Model() = default;

    /** Does one step; returns which invariant is broken then, or an empty text. */
    [[nodiscard]] virtual QString perform(const Step &step) = 0;
    /** After the last step: lets everything come to rest, and returns the same. */
    [[nodiscard]] virtual QString finish() = 0;
    /** What a run of many steps should have led to, and how often it did. */
    [[nodiscard]] virtual Counts happened() const = 0;
};

/** A kind of model. Its runs differ by their seed, in how the world is at first and in the steps.
 */
struct ModelKind {
    QList<Action> actions;
    std::function<std::unique_ptr<Model>(quint32 seed)> make;
};

/** How a run went. */
struct Outcome {
    /** The invariant that it came to grief on; empty if all went well. */
    QString broken;
    Counts happened;
};

/** @p count steps as the seed has them. */
[[nodiscard]] QList<Step> script(const ModelKind &kind, quint32 seed, qsizetype count);

/** Does the steps in a world of their own. */
[[nodiscard]] Outcome run(const ModelKind &kind, quint32 seed, const QList<Step> &steps);

/** A script that still fails in the same way, numbers aside, and of which no step can be left out.
 */
[[nodiscard]] QList<Step> shrunk(const ModelKind &kind, quint32 seed, const QList<Step> &steps);

/** The name of the step's action. */
[[nodiscard]] QString nameOf(const ModelKind &kind, const Step &step);

/** The steps as a person reads them, one a line. */
[[nodiscard]] QString text(const ModelKind &kind, const QList<Step> &steps);

} // namespace zorvane::tests
