#pragma once
// A text as a row of segmented liquid-crystal digits on a picture surface.
#include <QColor>
#include <QString>

#include <cstdint>

namespace platform {
class PictureSurface;
}

class mcLCD {
public:
    static const QColor kSfondo;  // background
    static const QColor kSpento;  // a dark segment
    static const QColor kAcceso;  // a lit segment
    static const QColor kTesto;   // the text colour

    void BackColor(const QColor& c);
    // Replaces what the surface shows by the text, right-aligned by blank cells.
    void Caption(const QString& text);
    void ForeColor(const QColor& c);
    void NewLCD(platform::PictureSurface* surface);

    int DigitWidth() const { return DigitWidth_; }
    int DigitHeight() const { return DigitHeight_; }

private:
    void DrawChar(QChar c);
    void DrawSegment(int segment);
    void DrawPoint();
    void ghost();

    std::int16_t CurrentX_ = 2;
    std::int16_t CurrentY_ = 2;
    std::int16_t DigitWidth_ = 0;
    std::int16_t DigitHeight_ = 0;
    platform::PictureSurface* Surface_ = nullptr;
    std::int16_t Index_ = 0;
};

// A one-needle instrument for a value from 0 to 1000.
class Strum {
public:
    void BackColor(const QColor& c);
    void Center(std::int16_t v);
    void Bottom(std::int16_t v);
    void BottomCenter(std::int16_t v);
    void VertMeter(std::int16_t v);
    void HorMeter(std::int16_t v);
    void ForeColor(const QColor& c);
    void NewLCD(platform::PictureSurface* surface);

private:
    void draw(int kind, std::int16_t v);
    platform::PictureSurface* Surface_ = nullptr;
};
