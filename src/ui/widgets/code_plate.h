// CodePlate: a QR code on screen, sharp, on a white plate whatever the window's colours.
#pragma once

#include "platform/bitmap.h"

#include <QFrame>
#include <QImage>
#include <QWidget>
#include <string_view>

class QPlainTextEdit;

namespace vantor::ui {

class CodePlate : public QWidget {
public:
    explicit CodePlate(QWidget* parent = nullptr);

    void setPicture(const Bitmap& picture);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_image;
};

// CodeText: the text of a code under its picture: monospaced, on a quiet ground, to be selected but not changed.
class CodeText : public QFrame {
public:
    explicit CodeText(QWidget* parent = nullptr);

    // As high as the text, up to a limit from which it scrolls.
    void setText(std::string_view text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPlainTextEdit* m_text;
};

} // namespace vantor::ui
