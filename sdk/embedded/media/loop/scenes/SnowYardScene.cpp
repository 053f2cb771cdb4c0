#include "media/loop/scenes/SnowYardScene.h"

#include "media/loop/scenes/Figures.h"

#include <array>

namespace ipncsdk::media {

namespace {

void paintFir(Canvas& canvas, float x, float ground, float height) {
    canvas.rect(x - 0.08F, ground - 0.4F, 0.16F, 0.45F, rgb(62, 48, 42));
    for (int tier = 0; tier < 4; ++tier) {
        const float top = ground - height + static_cast<float>(tier) * height * 0.2F;
        const float half = height * (0.12F + 0.055F * static_cast<float>(tier));
        const float low = top + height * 0.34F;
        canvas.polygon({{x, top}, {x + half, low}, {x - half, low}}, rgb(38, 64, 66));
        canvas.polygon({{x, top},
                        {x + half * 0.55F, low - height * 0.12F},
                        {x, low - height * 0.17F},
                        {x - half * 0.7F, low - height * 0.09F}},
                       rgb(220, 230, 242), 0.9F);
    }
}

} // namespace

void SnowYardScene::paintBackground(Canvas& canvas) const {
    canvas.gradient(0, 0, 16, 5.4F, rgb(58, 72, 102), rgb(128, 144, 170));
    canvas.polygon({{0, 5.4F}, {0, 4.1F}, {3, 3.4F}, {6, 4.3F}, {9.5F, 3.5F}, {13, 4.2F}, {16, 3.7F}, {16, 5.4F}},
                   rgb(112, 128, 156));
    canvas.gradient(0, 5.3F, 16, 3.7F, rgb(180, 192, 214), rgb(226, 232, 242));
    canvas.polygon({{6.1F, 5.6F}, {8.1F, 5.6F}, {10.6F, 9}, {2.8F, 9}}, rgb(158, 170, 192), 0.7F);
    canvas.grain(0, 5.3F, 16, 3.7F, 4, 77);
    // The house with lit windows and snow on its roof.
    canvas.gradient(10.2F, 3.3F, 4.8F, 2.6F, rgb(122, 78, 62), rgb(92, 58, 50));
    canvas.polygon({{9.7F, 3.4F}, {12.6F, 1.6F}, {15.5F, 3.4F}}, rgb(74, 62, 66));
    canvas.polygon({{9.6F, 3.4F}, {12.6F, 1.45F}, {15.6F, 3.4F}, {15.2F, 3.32F}, {12.6F, 1.8F}, {10.0F, 3.32F}},
                   rgb(238, 242, 250));
    for (const float x : {10.8F, 13.4F}) {
        canvas.glow({x + 0.45F, 4.35F}, 1.2F, 1.1F, rgb(255, 210, 120), 0.55F);
        canvas.rect(x, 3.9F, 0.9F, 0.9F, rgb(255, 220, 140));
        canvas.rect(x + 0.42F, 3.9F, 0.06F, 0.9F, rgb(74, 52, 46));
        canvas.rect(x, 4.32F, 0.9F, 0.06F, rgb(74, 52, 46));
    }
    canvas.rect(12.15F, 4.3F, 0.8F, 1.6F, rgb(58, 42, 40));
    canvas.glow({11.25F, 6.2F}, 1.3F, 0.35F, rgb(255, 214, 140), 0.5F);
    canvas.glow({13.85F, 6.2F}, 1.3F, 0.35F, rgb(255, 214, 140), 0.5F);
    paintFir(canvas, 1.3F, 6.3F, 3.7F);
    paintFir(canvas, 3.3F, 5.9F, 2.8F);
    paintFir(canvas, 15.4F, 6.9F, 3.4F);
    for (int post = 0; post < 9; ++post) {
        const float x = -0.2F + static_cast<float>(post) * 0.72F;
        canvas.rect(x, 5.75F, 0.12F, 0.75F, rgb(84, 72, 70));
        canvas.rect(x - 0.02F, 5.68F, 0.16F, 0.1F, rgb(240, 244, 250));
    }
    canvas.rect(-0.2F, 5.95F, 5.9F, 0.09F, rgb(84, 72, 70));
    canvas.rect(8.85F, 2.2F, 0.08F, 3.6F, rgb(150, 154, 162));
}

void SnowYardScene::paintFrame(Canvas& canvas, float time) const {
    constexpr int folds = 10;
    std::array<Point, std::size_t{2} * (folds + 1)> flag;
    for (int fold = 0; fold <= folds; ++fold) {
        const float along = static_cast<float>(fold) / folds;
        const float lift = 0.12F * along * swing(along, 1.2F, -travel(time, 7));
        flag[static_cast<std::size_t>(fold)] = {8.93F + along * 1.35F, 2.3F + lift};
        flag[static_cast<std::size_t>(2 * folds + 1 - fold)] = {8.93F + along * 1.35F, 3.05F + lift};
    }
    canvas.polygon(flag, rgb(188, 50, 52));
    for (unsigned puff = 0; puff < 5; ++puff) {
        const float rise = travel(time, 2, static_cast<float>(puff) / 5);
        canvas.glow({13.9F - rise * 1.3F, 1.9F - rise * 1.7F}, 0.25F + rise * 0.55F, 0.2F + rise * 0.4F,
                    rgb(196, 202, 214), 0.7F * (1 - rise));
    }
    canvas.rect(13.7F, 1.75F, 0.4F, 0.75F, rgb(86, 58, 52));
    const float way = travel(time, 1);
    const bool back = way >= 0.5F;
    const float part = back ? 2 - 2 * way : 2 * way;
    const Point feet{4.6F + part * 5.6F, 7.4F};
    paintWalker(canvas, feet, 1.9F, travel(time, 14), back ? -1.0F : 1.0F, rgb(58, 74, 116), rgb(42, 44, 54));
    const Point lantern{feet.x + (back ? -0.42F : 0.42F), 6.65F + 0.04F * swing(time, 14)};
    canvas.glow({lantern.x, 7.4F}, 1.6F, 0.4F, rgb(255, 216, 140), 0.55F);
    canvas.glow(lantern, 0.8F, 0.8F, rgb(255, 224, 150), 0.8F);
    canvas.ellipse(lantern, 0.08F, 0.11F, rgb(255, 248, 220));
    for (unsigned flake = 0; flake < 170; ++flake) {
        const unsigned depth = flake % 3;
        const float size = 0.02F + 0.018F * static_cast<float>(depth);
        const float fall = travel(time, static_cast<float>(1 + depth), strewn(flake, 1));
        const float drift = 0.25F * swing(time, 2, strewn(flake, 3)) + fall * 0.8F;
        const float x = strewn(flake, 2) * 17 - 1 + drift;
        canvas.ellipse({x, fall * 9.4F - 0.2F}, size, size, rgb(250, 252, 255),
                       0.55F + 0.15F * static_cast<float>(depth));
    }
}

} // namespace ipncsdk::media
