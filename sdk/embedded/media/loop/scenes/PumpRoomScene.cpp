#include "media/loop/scenes/PumpRoomScene.h"

#include "media/loop/scenes/Figures.h"

#include <array>

namespace ipncsdk::media {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

void paintPipe(Canvas& canvas, float x, float y, float width, float height) {
    const bool lying = width > height;
    canvas.rect(x, y, width, height, rgb(58, 112, 132));
    if (lying) {
        canvas.rect(x, y + height * 0.15F, width, height * 0.2F, rgb(138, 184, 198), 0.8F);
    } else {
        canvas.rect(x + width * 0.15F, y, width * 0.2F, height, rgb(138, 184, 198), 0.8F);
    }
}

void paintDial(Canvas& canvas, Point centre, float radius) {
    canvas.ellipse({centre.x + 0.05F, centre.y + 0.07F}, radius * 1.12F, radius * 1.12F, rgb(0, 0, 0), 0.35F);
    canvas.ellipse(centre, radius * 1.1F, radius * 1.1F, rgb(70, 74, 80));
    canvas.ellipse(centre, radius, radius, rgb(244, 244, 238));
    canvas.arc(centre, radius * 0.8F, radius * 0.92F, pi * 0.8F, pi * 1.7F, rgb(70, 170, 90));
    canvas.arc(centre, radius * 0.8F, radius * 0.92F, pi * 1.7F, pi * 2.0F, rgb(234, 178, 46));
    canvas.arc(centre, radius * 0.8F, radius * 0.92F, pi * 2.0F, pi * 2.2F, rgb(212, 52, 46));
    for (int tick = 0; tick <= 14; ++tick) {
        const float angle = pi * (0.8F + 0.1F * static_cast<float>(tick));
        canvas.line({centre.x + radius * 0.66F * std::cos(angle), centre.y + radius * 0.66F * std::sin(angle)},
                    {centre.x + radius * 0.78F * std::cos(angle), centre.y + radius * 0.78F * std::sin(angle)}, 0.03F,
                    rgb(50, 52, 56));
    }
}

void paintNeedle(Canvas& canvas, Point centre, float radius, float part) {
    const float angle = pi * (0.8F + 1.4F * part);
    canvas.line({centre.x - 0.15F * radius * std::cos(angle), centre.y - 0.15F * radius * std::sin(angle)},
                {centre.x + 0.74F * radius * std::cos(angle), centre.y + 0.74F * radius * std::sin(angle)}, 0.06F,
                rgb(190, 36, 32));
    canvas.ellipse(centre, radius * 0.11F, radius * 0.11F, rgb(46, 48, 52));
}

constexpr std::array dials{Point{10.6F, 2.2F}, Point{12.7F, 2.2F}, Point{14.8F, 2.2F}};

} // namespace

void PumpRoomScene::paintBackground(Canvas& canvas) const {
    canvas.gradient(0, 0, 16, 6.6F, rgb(176, 184, 182), rgb(142, 150, 148));
    for (int row = 0; row < 9; ++row) {
        canvas.rect(0, 0.75F * static_cast<float>(row), 16, 0.03F, rgb(120, 128, 126), 0.5F);
    }
    canvas.gradient(0, 6.55F, 16, 2.5F, rgb(108, 104, 98), rgb(84, 82, 80));
    canvas.grain(0, 6.55F, 16, 2.5F, 4, 3);
    for (int mark = 0; mark < 22; ++mark) {
        const float x = static_cast<float>(mark) * 0.8F - 0.4F;
        canvas.polygon({{x, 6.85F}, {x + 0.4F, 6.85F}, {x + 0.2F, 7.05F}, {x - 0.2F, 7.05F}}, rgb(228, 190, 50));
    }
    paintPipe(canvas, 5.6F, 5.1F, 4.2F, 0.42F);
    paintPipe(canvas, 9.4F, 3.6F, 0.42F, 2.2F);
    paintPipe(canvas, 9.4F, 3.4F, 6.6F, 0.42F);
    paintPipe(canvas, 2.6F, 0, 0.46F, 1.4F);
    canvas.roundedRect(0.75F, 1.25F, 4.9F, 5.5F, 0.35F, rgb(94, 102, 110));
    canvas.roundedRect(1.0F, 1.5F, 4.4F, 5.0F, 0.25F, rgb(206, 222, 228));
    for (int mark = 0; mark < 10; ++mark) {
        canvas.rect(5.05F, 1.9F + static_cast<float>(mark) * 0.45F, mark % 2 == 0 ? 0.35F : 0.2F, 0.04F,
                    rgb(40, 44, 50));
    }
    for (const Point& dial : dials) {
        paintDial(canvas, dial, 0.85F);
    }
    canvas.roundedRect(7.5F, 5.4F, 2.6F, 1.5F, 0.2F, rgb(42, 84, 150));
    canvas.rect(10.0F, 5.75F, 1.7F, 0.85F, rgb(64, 70, 78));
    for (int fin = 0; fin < 7; ++fin) {
        canvas.rect(10.15F + static_cast<float>(fin) * 0.22F, 5.7F, 0.08F, 0.95F, rgb(96, 102, 110));
    }
    canvas.roundedRect(12.7F, 4.4F, 2.7F, 2.5F, 0.1F, rgb(196, 200, 202));
    canvas.rect(12.9F, 4.62F, 1.5F, 0.8F, rgb(22, 40, 34));
}

void PumpRoomScene::paintFrame(Canvas& canvas, float time) const {
    const float level = 0.55F + 0.3F * swing(time, 1);
    const float surface = 6.5F - level * 4.8F;
    // Water pours in while the level rises.
    const float pouring = ease(swing(time, 1, 0.25F), -0.1F, 0.2F);
    std::array<Point, 27> water;
    for (std::size_t step = 0; step < 25; ++step) {
        const float x = static_cast<float>(step) / 24;
        water[step] = {1.0F + x * 4.0F,
                       surface + 0.05F * swing(x, 2, travel(time, 6)) + 0.03F * swing(x, 5, travel(time, -9))};
    }
    water[25] = {5.0F, 6.35F};
    water[26] = {1.0F, 6.35F};
    if (pouring > 0) {
        canvas.rect(2.68F, 1.3F, 0.3F, surface - 1.25F, rgb(110, 180, 220), 0.8F * pouring);
    }
    canvas.polygon(water, rgb(44, 128, 190), 0.85F);
    for (unsigned bubble = 0; bubble < 14; ++bubble) {
        const float rise = travel(time, 3, strewn(bubble, 1));
        const float y = 6.2F - rise * 4.6F;
        if (y > surface + 0.1F) {
            const float x = 1.4F + strewn(bubble, 2) * 3.2F + 0.08F * swing(time, 6, strewn(bubble, 3));
            canvas.ellipse({x, y}, 0.05F + 0.05F * strewn(bubble, 4), 0.07F, rgb(196, 230, 246), 0.7F);
        }
    }
    canvas.polygon({{1.5F, 1.7F}, {2.0F, 1.7F}, {1.7F, 6.2F}, {1.3F, 6.2F}}, rgb(255, 255, 255), 0.18F);
    const float pressure = 0.45F + 0.25F * swing(time, 2, 0.1F) + 0.03F * swing(time, 31);
    const std::array parts{level, pressure, 0.6F + 0.3F * swing(time, 1, 0.4F)};
    for (std::size_t dial = 0; dial < dials.size(); ++dial) {
        paintNeedle(canvas, dials[dial], 0.85F, parts[dial]);
    }
    const float turn = travel(time, 12) * 2 * pi;
    canvas.ellipse({8.4F, 6.15F}, 0.52F, 0.52F, rgb(200, 206, 212));
    for (int blade = 0; blade < 5; ++blade) {
        const float angle = turn + static_cast<float>(blade) * 2 * pi / 5;
        canvas.arc({8.4F, 6.15F}, 0.1F, 0.46F, angle, angle + 0.6F, rgb(62, 70, 80));
    }
    canvas.ellipse({8.4F, 6.15F}, 0.1F, 0.1F, rgb(30, 32, 36));
    // The trace on the control cabinet's screen, and its lamps.
    Point previous{12.95F, 5.0F};
    for (int step = 1; step <= 28; ++step) {
        const float x = static_cast<float>(step) / 28;
        const Point next{12.95F + 1.4F * x,
                         5.02F - 0.16F * swing(x, 2, travel(time, 3)) - 0.1F * swing(x, 5, travel(time, 7))};
        canvas.line(previous, next, 0.04F, rgb(90, 240, 140));
        previous = next;
    }
    const std::array lamps{rgb(70, 230, 100), rgb(250, 190, 50), rgb(240, 60, 50)};
    for (std::size_t lamp = 0; lamp < lamps.size(); ++lamp) {
        const bool on =
            lamp == 0 || (lamp == 1 && pouring > 0.5F) || (lamp == 2 && level > 0.8F && swing(time, 16) > 0);
        const Point at{13.1F + static_cast<float>(lamp) * 0.6F, 5.95F};
        canvas.ellipse(at, 0.16F, 0.16F, on ? lamps[lamp] : rgb(96, 98, 100));
        canvas.glow(at, 0.45F, 0.45F, lamps[lamp], on ? 0.5F : 0.0F);
    }
}

} // namespace ipncsdk::media
