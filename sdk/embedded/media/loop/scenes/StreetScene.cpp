#include "media/loop/scenes/StreetScene.h"

#include "media/loop/scenes/Figures.h"

#include <array>

namespace ipncsdk::media {

namespace {

constexpr float curb = 5.9F;

void paintHouse(Canvas& canvas, float x, float width, float top, Colour wall, unsigned seed) {
    canvas.gradient(x, top, width, curb - top - 0.25F, wall, rgb(34, 32, 40));
    canvas.rect(x - 0.06F, top - 0.12F, width + 0.12F, 0.16F, rgb(30, 28, 36));
    const int columns = static_cast<int>(width / 0.62F);
    const int rows = static_cast<int>((curb - 1.1F - top) / 0.75F);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const float chance = strewn(static_cast<unsigned>(row * 31 + column), seed);
            const Colour pane = chance > 0.62F  ? rgb(250, 208, 120)
                                : chance > 0.5F ? rgb(196, 214, 226)
                                                : rgb(30, 38, 54);
            const float left = x + 0.18F + static_cast<float>(column) * (width - 0.2F) / static_cast<float>(columns);
            const float upper = top + 0.3F + static_cast<float>(row) * 0.75F;
            canvas.rect(left, upper, 0.3F, 0.42F, pane);
            canvas.rect(left - 0.03F, upper + 0.42F, 0.36F, 0.05F, rgb(62, 60, 70));
        }
    }
}

void paintLamp(Canvas& canvas, float x) {
    canvas.rect(x - 0.04F, 2.75F, 0.08F, curb - 2.8F, rgb(24, 26, 32));
    canvas.line({x, 2.8F}, {x + 0.7F, 2.6F}, 0.07F, rgb(24, 26, 32));
    canvas.polygon({{x + 0.68F, 2.7F}, {x + 1.0F, 2.7F}, {x + 1.9F, curb + 0.9F}, {x - 0.3F, curb + 0.9F}},
                   rgb(255, 220, 150), 0.1F);
    canvas.glow({x + 0.82F, 2.68F}, 0.8F, 0.8F, rgb(255, 226, 160), 0.75F);
    canvas.rect(x + 0.62F, 2.55F, 0.42F, 0.12F, rgb(255, 244, 214));
    canvas.glow({x + 0.8F, curb + 0.35F}, 1.5F, 0.4F, rgb(255, 214, 140), 0.35F);
}

} // namespace

void StreetScene::paintBackground(Canvas& canvas) const {
    canvas.gradient(0, 0, 16, 4, rgb(28, 36, 70), rgb(122, 92, 112));
    canvas.gradient(0, 4, 16, 2, rgb(122, 92, 112), rgb(206, 138, 104));
    for (unsigned star = 0; star < 40; ++star) {
        canvas.ellipse({strewn(star, 3) * 16, strewn(star, 4) * 2.2F}, 0.018F, 0.018F, rgb(230, 234, 248), 0.7F);
    }
    constexpr std::array walls{rgb(92, 72, 78), rgb(72, 78, 96), rgb(104, 88, 74), rgb(66, 74, 84), rgb(96, 70, 66)};
    float x = -0.3F;
    for (unsigned house = 0; house < walls.size(); ++house) {
        const float width = 2.7F + strewn(house, 7) * 1.2F;
        paintHouse(canvas, x, width, 1.3F + strewn(house, 8) * 1.9F, walls[house], house + 11);
        x += width + 0.12F;
    }
    canvas.gradient(0, curb - 0.3F, 16, 0.55F, rgb(112, 106, 108), rgb(92, 88, 92));
    canvas.gradient(0, curb + 0.22F, 16, 9 - curb, rgb(44, 45, 52), rgb(62, 62, 68));
    canvas.rect(0, curb + 0.2F, 16, 0.07F, rgb(140, 136, 132));
    canvas.grain(0, curb, 16, 3.2F, 4, 17);
    for (int dash = 0; dash < 9; ++dash) {
        const float left = static_cast<float>(dash) * 1.9F;
        canvas.polygon({{left, 7.22F}, {left + 1.0F, 7.22F}, {left + 1.03F, 7.32F}, {left - 0.03F, 7.32F}},
                       rgb(206, 202, 186), 0.85F);
    }
    for (const float lamp : {1.2F, 6.4F, 11.6F}) {
        paintLamp(canvas, lamp);
    }
}

void StreetScene::paintFrame(Canvas& canvas, float time) const {
    // A window that flickers like a television set.
    canvas.glow({8.1F, 3.9F}, 0.5F, 0.5F, rgb(120, 170, 255), 0.25F + 0.2F * swing(time, 13) * swing(time, 5));
    paintWalker(canvas, {travel(time, 1, 0.1F) * 18 - 1, curb + 0.05F}, 1.25F, travel(time, 12), 1, rgb(96, 44, 48),
                rgb(40, 42, 60));
    paintWalker(canvas, {17 - travel(time, 1, 0.55F) * 18, curb + 0.14F}, 1.3F, travel(time, 13), -1, rgb(54, 76, 70),
                rgb(30, 30, 38));
    paintCar(canvas, 19 - travel(time, 2, 0.15F) * 22, 6.95F, 2.5F, -1, rgb(52, 74, 112), true);
    paintCar(canvas, 19 - travel(time, 2, 0.62F) * 22, 6.95F, 2.4F, -1, rgb(150, 150, 156), true);
    paintCar(canvas, travel(time, 2, 0.3F) * 24 - 4, 8.3F, 3.1F, 1, rgb(150, 34, 36), true);
    paintCar(canvas, travel(time, 2, 0.85F) * 24 - 4, 8.3F, 3.0F, 1, rgb(206, 196, 172), true);
}

} // namespace ipncsdk::media
