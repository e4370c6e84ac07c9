// The small widgets that windows, rows and sheets are put together from.
//
// All of them show text as text, never as markup, and take their colours from the palette at each painting, so
// that they follow a change between light and dark.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <functional>
#include <string_view>

class QBoxLayout;
class QVBoxLayout;

namespace vantor::ui {

enum class TextColor { Primary, Secondary, Blue, Green, Amber, Red };

// One line of text that ends in "…" where it does not fit; its tool tip then shows all of it.
class ElidedLabel : public QWidget {
public:
    ElidedLabel(const QFont& font, TextColor color, QWidget* parent = nullptr);

    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return m_text; }
    void setColor(TextColor color);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateToolTip();

    QString m_text;
    TextColor m_color;
};

// A text of the program's own, which wraps where `wraps` is set.
class TextLabel : public QLabel {
public:
    TextLabel(const QString& text, const QFont& font, TextColor color, bool wraps = false,
              QWidget* parent = nullptr);

    void setColor(TextColor color);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyColor();

    TextColor m_color;
    bool m_applying = false;
};

// A symbol that is only looked at, dimmed to `opacity`.
class SymbolLabel : public QWidget {
public:
    SymbolLabel(QString name, int size, qreal opacity = 1, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {m_size, m_size}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
    int m_size;
    qreal m_opacity;
};

// A borderless button that is a symbol alone, muted until it or its row is hovered or has the focus; its help text is its
// tool tip and its accessible name.
class SymbolButton : public QToolButton {
public:
    SymbolButton(const QString& symbol, const QString& help, QWidget* parent = nullptr);

    [[nodiscard]] const QString& symbol() const { return m_symbol; }

private:
    QString m_symbol;
};

// A command of the window: a symbol with its text under it.
class CommandButton : public QPushButton {
public:
    CommandButton(const QIcon& symbol, const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// The one button of a window or sheet that does what it is for, filled with the accent colour.
class ProminentButton : public QPushButton {
public:
    explicit ProminentButton(const QString& text, QWidget* parent = nullptr);
};

// Empties a field whose text was taken, so that there is nothing left in it to take back: the next undo is the program's.
void emptyTaken(QLineEdit& field);

// A box of choices that the mouse wheel does not change unseen: it scrolls what is around it instead.
class ComboBox : public QComboBox {
public:
    explicit ComboBox(QWidget* parent = nullptr);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

// One of a few choices that stand side by side without a gap, of which the chosen one is filled with the accent colour.
class SegmentButton : public QPushButton {
public:
    enum class Place { First, Middle, Last };
    SegmentButton(const QString& text, Place place, QWidget* parent = nullptr);

    [[nodiscard]] Place place() const { return m_place; }

private:
    Place m_place;
};

// A filled circle that is there or not without moving anything.
class ActiveMarker : public QWidget {
public:
    explicit ActiveMarker(QWidget* parent = nullptr);

    void setActive(bool active);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_active = false;
};

// A short text on a filled, rounded ground.
class Tag : public QWidget {
public:
    enum class Kind {
        // White on purple.
        Client,
        // Green on a breath of green.
        Active,
    };
    Tag(Kind kind, QWidget* parent = nullptr);

    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return m_text; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind m_kind;
    QString m_text;
};

// A count, with digits of even width in whatever font, so that nothing dances and columns stand.
class CountLabel : public TextLabel {
public:
    CountLabel(const QFont& font, TextColor color, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int advance(QChar sign) const;

    // Of the widest: rows ask for it whenever they are painted.
    int m_digit = 0;
};

// A line between two regions, one pixel thin.
class Divider : public QWidget {
public:
    explicit Divider(Qt::Orientation orientation, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

[[nodiscard]] QColor colorOf(TextColor color, const QPalette& palette);

// Names a control for assistive technology and for tests, and hands it back.
template <typename Widget>
Widget* named(Widget* widget, const char* objectName, const QString& accessibleName = {}) {
    widget->setObjectName(QLatin1String(objectName));
    if (!accessibleName.isEmpty())
        widget->setAccessibleName(accessibleName);
    return widget;
}

// Tells assistive technology more of a widget than its name; says nothing where that is what it was told before.
void describe(QWidget* widget, const QString& text);

// Shows a text as a tool tip, as it is. Assistive technology would read the tip with its markup, and gets the text.
void tellInFull(QWidget* widget, const QString& text);

// A field with its placeholder, which it is always wide enough for; named by its label or else by that placeholder.
[[nodiscard]] QLineEdit* makeField(const char* objectName, const QString& placeholder,
                                   const QString& label = {});

// Gives a field one width: this one, or at large fonts as much more as so many characters need.
void fixWidth(QLineEdit* field, int width, int characters);

// Leaves a widget's room free while it is hidden, so that nothing beside it moves.
void keepRoomOf(QWidget* widget);

// A label, with what it is of under it.
[[nodiscard]] QVBoxLayout* labelled(const QString& label, QWidget* field);

} // namespace vantor::ui
