#pragma once

#include <QGuiApplication>
#include <QPalette>

namespace zorvane::tests
{

/** A light or a dark desktop while it lives. */
class Appearance
{
public:
    explicit Appearance(bool dark)
        : m_before(QGuiApplication::palette())
    {
        auto palette = m_before;
        palette.setColor(QPalette::Window, dark ? QColor(0x202020) : QColor(0xececec));
        QGuiApplication::setPalette(palette);
    }
    ~Appearance() { QGuiApplication::setPalette(m_before); }
    Appearance(const Appearance &) = delete;
    Appearance &operator=(const Appearance &) = delete;

    /** What the main window and the settings are filled with. */
    [[nodiscard]] static QColor window(bool dark) { return {dark ? 0xff28282a : 0xffececec}; }

private:
    QPalette m_before;
};

} // namespace zorvane::tests
