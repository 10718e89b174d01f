#include "instruments/mcLCD.h"

#include "instruments/LcdGeometry.h"
#include "platform/Failure.h"
#include "platform/Numbers.h"
#include "platform/PictureSurface.h"

const QColor mcLCD::kSfondo(0, 50, 0);
const QColor mcLCD::kSpento(0, 85, 0);
const QColor mcLCD::kAcceso(0, 255, 0);
const QColor mcLCD::kTesto(128, 255, 128);

namespace {
platform::PictureSurface* require(platform::PictureSurface* s)
{
    if (!s)
        throw platform::Failure("Variabile oggetto non impostata");
    return s;
}
} // namespace

void mcLCD::NewLCD(platform::PictureSurface* surface)
{
    Surface_ = require(surface);
    CurrentX_ = 2;
    CurrentY_ = 2;
    DigitHeight_ = num::ToInt16(lcd::DigitHeight(Surface_->ScaleHeight()));
    DigitWidth_ = num::ToInt16(lcd::DigitWidth(DigitHeight_));
}

void mcLCD::BackColor(const QColor& c) { require(Surface_)->SetBackColor(c); }
void mcLCD::ForeColor(const QColor& c) { require(Surface_)->SetForeColor(c); }

void mcLCD::ghost()
{
    for (int s : lcd::GhostSegments())
        DrawSegment(s);
}

void mcLCD::DrawPoint()
{
    const lcd::Box b = lcd::PointBox(CurrentX_, CurrentY_, DigitWidth_, DigitHeight_);
    Surface_->FilledBox(b.x1, b.y1, b.x2, b.y2);
}

void mcLCD::Caption(const QString& text)
{
    require(Surface_);
    const std::int16_t startX = CurrentX_;
    Surface_->SetBackColor(kSfondo);
    Surface_->Cls();
    const int W = DigitWidth_;
    // Blank cells: their count comes from the digit's width, which right-aligns the text.
    for (Index_ = 0; Index_ < W - text.size() - 1; ++Index_) {
        Surface_->SetForeColor(kSpento);
        ghost();
        CurrentX_ = num::ToInt16(CurrentX_ + W + 5);
    }
    Surface_->SetForeColor(kTesto);
    for (const QChar c : text) {
        if (c == '.' || c == ',') {
            Surface_->SetForeColor(kSpento);
            ghost();
            Surface_->SetForeColor(kAcceso);
            DrawPoint();
            CurrentX_ = num::ToInt16(CurrentX_ + W + 5);
        } else if (c == ':') {
            Surface_->SetForeColor(kAcceso);
            DrawPoint();
            CurrentX_ = num::ToInt16(CurrentX_ + W - 2);
        } else {
            DrawChar(c);
            CurrentX_ = num::ToInt16(CurrentX_ + W + 5);
        }
    }
    CurrentX_ = startX;
    Surface_->setAccessibleName(text);
}

void mcLCD::DrawChar(QChar c)
{
    const lcd::Glyph g = lcd::GlyphOf(c);
    if (g.setsColours)
        Surface_->SetForeColor(kAcceso);
    for (int s : g.lit)
        DrawSegment(s);
    if (g.setsColours) {
        Surface_->SetForeColor(kSpento);
        for (int s : g.dark)
            DrawSegment(s);
    }
}

void mcLCD::DrawSegment(int segment)
{
    for (const QLineF& l : lcd::SegmentLines(segment, DigitWidth_, DigitHeight_))
        Surface_->Line(l.translated(CurrentX_, CurrentY_));
}

void Strum::NewLCD(platform::PictureSurface* surface) { Surface_ = require(surface); }
void Strum::BackColor(const QColor& c) { require(Surface_)->SetBackColor(c); }
void Strum::ForeColor(const QColor& c) { require(Surface_)->SetForeColor(c); }

void Strum::draw(int kind, std::int16_t v)
{
    require(Surface_);
    Surface_->Cls();
    Surface_->Line(strum::NeedleLine(static_cast<strum::Kind>(kind), v, Surface_->ScaleWidth(), Surface_->ScaleHeight()));
    Surface_->setAccessibleName(QString::number(v));
}

void Strum::Center(std::int16_t v) { draw(static_cast<int>(strum::Kind::Center), v); }
void Strum::Bottom(std::int16_t v) { draw(static_cast<int>(strum::Kind::Bottom), v); }
void Strum::BottomCenter(std::int16_t v) { draw(static_cast<int>(strum::Kind::BottomCenter), v); }
void Strum::VertMeter(std::int16_t v) { draw(static_cast<int>(strum::Kind::VertMeter), v); }
void Strum::HorMeter(std::int16_t v) { draw(static_cast<int>(strum::Kind::HorMeter), v); }
