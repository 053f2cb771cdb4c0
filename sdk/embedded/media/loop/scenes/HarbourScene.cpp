#include "media/loop/scenes/HarbourScene.h"

#include "media/loop/scenes/Figures.h"

#include <array>

namespace ipncsdk::media {

namespace {

constexpr float horizon = 3.9F;

/// A band of water whose upper edge is a running wave.
void paintWave(Canvas& canvas, float y, float height, float way, Colour colour, float alpha) {
    constexpr int steps = 48;
    std::array<Point, steps + 3> points;
    for (int step = 0; step <= steps; ++step) {
        const float x = 16 * static_cast<float>(step) / steps;
        const float lift = swing(x / 16, 7, way) * 0.6F + swing(x / 16, 17, -2 * way) * 0.4F;
        points[static_cast<std::size_t>(step)] = {x, y + lift * height};
    }
    points[steps + 1] = {16, y + height * 3};
    points[steps + 2] = {0, y + height * 3};
    canvas.polygon(points, colour, alpha);
}

void paintShip(Canvas& canvas, float x, float y) {
    canvas.polygon({{x - 2.3F, y - 0.55F}, {x + 2.6F, y - 0.55F}, {x + 2.15F, y + 0.3F}, {x - 2.1F, y + 0.3F}},
                   rgb(38, 52, 78));
    canvas.polygon({{x - 2.14F, y + 0.12F}, {x + 2.25F, y + 0.12F}, {x + 2.12F, y + 0.34F}, {x - 2.08F, y + 0.34F}},
                   rgb(158, 48, 42));
    constexpr std::array boxes{rgb(196, 92, 48), rgb(58, 118, 142), rgb(206, 178, 80), rgb(92, 128, 82),
                               rgb(170, 66, 70)};
    for (unsigned box = 0; box < 10; ++box) {
        const float left = x - 0.95F + static_cast<float>(box % 5) * 0.6F;
        const unsigned layer = box / 5;
        canvas.rect(left, y - 0.86F - static_cast<float>(layer) * 0.31F, 0.56F, 0.29F,
                    boxes[(box * 3 + layer) % boxes.size()]);
    }
    canvas.rect(x - 2.05F, y - 1.6F, 0.85F, 1.06F, rgb(234, 234, 228));
    canvas.rect(x - 1.98F, y - 1.5F, 0.7F, 0.16F, rgb(54, 74, 92));
    canvas.rect(x - 1.98F, y - 1.18F, 0.7F, 0.09F, rgb(120, 136, 146));
    canvas.rect(x - 1.8F, y - 2.05F, 0.3F, 0.5F, rgb(196, 64, 50));
    canvas.line({x + 2.2F, y - 0.55F}, {x + 2.2F, y - 1.3F}, 0.05F, rgb(70, 70, 76));
}

void paintCrane(Canvas& canvas, float reach, float drop) {
    const Colour steel = rgb(214, 146, 44);
    canvas.line({13.1F, 7.2F}, {13.5F, 2.1F}, 0.16F, steel);
    canvas.line({14.3F, 7.2F}, {13.9F, 2.1F}, 0.16F, steel);
    for (int brace = 0; brace < 5; ++brace) {
        const float y = 6.6F - static_cast<float>(brace);
        canvas.line({13.2F, y}, {14.1F, y - 0.8F}, 0.07F, steel);
    }
    canvas.rect(8.6F, 1.9F, 7, 0.2F, steel);
    canvas.line({13.7F, 0.9F}, {9.2F, 1.95F}, 0.06F, rgb(86, 80, 74));
    canvas.line({13.7F, 0.9F}, {15.5F, 1.95F}, 0.06F, rgb(86, 80, 74));
    canvas.line({13.7F, 0.85F}, {13.7F, 2}, 0.12F, steel);
    canvas.rect(reach - 0.25F, 2.08F, 0.5F, 0.18F, rgb(70, 66, 64));
    canvas.line({reach - 0.15F, 2.2F}, {reach - 0.15F, drop}, 0.03F, rgb(52, 50, 50));
    canvas.line({reach + 0.15F, 2.2F}, {reach + 0.15F, drop}, 0.03F, rgb(52, 50, 50));
    canvas.rect(reach - 0.42F, drop, 0.84F, 0.4F, rgb(52, 108, 150));
    canvas.rect(reach - 0.42F, drop + 0.16F, 0.84F, 0.06F, rgb(34, 78, 112));
}

} // namespace

void HarbourScene::paintBackground(Canvas& canvas) const {
    canvas.gradient(0, 0, 16, horizon, rgb(126, 172, 208), rgb(240, 224, 202));
    canvas.glow({4.2F, 2.6F}, 3, 3, rgb(255, 240, 206), 0.8F);
    canvas.ellipse({4.2F, 2.6F}, 0.42F, 0.42F, rgb(255, 248, 226));
    canvas.polygon({{0, horizon}, {0, 3.3F}, {1.6F, 3.0F}, {3.4F, 3.45F}, {5.2F, 3.2F}, {7.5F, 3.7F}, {9, horizon}},
                   rgb(128, 150, 166));
    canvas.polygon({{9, horizon}, {11.2F, 3.35F}, {13.4F, 3.6F}, {16, 3.1F}, {16, horizon}}, rgb(142, 160, 172));
    canvas.gradient(0, horizon, 16, 9 - horizon, rgb(150, 182, 190), rgb(34, 84, 108));
    canvas.glow({4.2F, horizon + 0.5F}, 1.6F, 1.4F, rgb(255, 240, 206), 0.4F);
}

void HarbourScene::paintFrame(Canvas& canvas, float time) const {
    for (unsigned cloud = 0; cloud < 3; ++cloud) {
        const float x = travel(time, 1, static_cast<float>(cloud) * 0.37F) * 22 - 3;
        const float y = 0.8F + 0.5F * static_cast<float>(cloud);
        canvas.glow({x, y}, 1.9F, 0.28F, rgb(255, 255, 252), 0.75F);
        canvas.glow({x + 0.8F, y - 0.16F}, 1.1F, 0.3F, rgb(255, 255, 252), 0.7F);
    }
    paintWave(canvas, 4.35F, 0.05F, travel(time, 3), rgb(172, 200, 204), 0.5F);
    paintShip(canvas, travel(time, 1) * 22 - 3, 5.1F + swing(time, 3) * 0.05F);
    for (int band = 0; band < 5; ++band) {
        const float depth = static_cast<float>(band);
        paintWave(canvas, 5.45F + depth * 0.62F, 0.06F + depth * 0.03F,
                  travel(time, band % 2 == 0 ? 4 : -5, depth * 0.3F),
                  band % 2 == 0 ? rgb(96, 144, 160) : rgb(46, 98, 122), 0.55F);
    }
    canvas.rect(12.2F, 7.1F, 4, 2, rgb(96, 92, 88));
    canvas.rect(12.2F, 7.05F, 4, 0.14F, rgb(146, 140, 132));
    const float swingOut = ease(travel(time, 1), 0.1F, 0.45F) - ease(travel(time, 1), 0.6F, 0.95F);
    paintCrane(canvas, 12.3F - 3 * swingOut, 3.2F + 1.7F * ease(swingOut, 0.5F, 1) + 0.05F * swing(time, 4));
    for (unsigned gull = 0; gull < 4; ++gull) {
        const float x = travel(time, 1, strewn(gull, 1)) * 18 - 1;
        const float y = 1.3F + strewn(gull, 2) * 1.6F + 0.15F * swing(time, 3, strewn(gull, 3));
        const float flap = 0.1F * swing(time, 14, strewn(gull, 5));
        canvas.line({x - 0.2F, y - flap}, {x, y}, 0.045F, rgb(70, 76, 84));
        canvas.line({x, y}, {x + 0.2F, y - flap}, 0.045F, rgb(70, 76, 84));
    }
    canvas.ellipse({2.4F, 7.9F + swing(time, 3, 0.2F) * 0.12F}, 0.3F, 0.22F, rgb(206, 62, 46));
    canvas.glow({2.4F, 7.5F + swing(time, 3, 0.2F) * 0.12F}, 0.5F, 0.5F, rgb(255, 90, 70),
                swing(time, 6) > 0.6F ? 0.8F : 0.0F);
}

} // namespace ipncsdk::media
