#include "media/loop/scenes/LobbyScene.h"

#include "media/loop/scenes/Figures.h"

namespace ipncsdk::media {

void LobbyScene::paintBackground(Canvas& canvas) const {
    canvas.gradient(0, 0, 16, 1.2F, rgb(232, 230, 224), rgb(214, 210, 202));
    canvas.gradient(0, 1.2F, 16, 4.6F, rgb(206, 198, 184), rgb(186, 176, 160));
    canvas.gradient(0, 5.8F, 16, 3.2F, rgb(150, 140, 128), rgb(196, 188, 176));
    for (int tile = -8; tile <= 8; ++tile) {
        const float x = static_cast<float>(tile);
        canvas.line({8 + x * 1.2F, 5.8F}, {8 + x * 3.0F, 9}, 0.025F, rgb(126, 116, 104), 0.7F);
    }
    for (const float y : {6.1F, 6.6F, 7.3F, 8.2F}) {
        canvas.rect(0, y, 16, 0.025F, rgb(126, 116, 104), 0.7F);
    }
    for (int light = 0; light < 5; ++light) {
        const float x = 1.8F + static_cast<float>(light) * 3.1F;
        canvas.glow({x, 0.75F}, 1.3F, 0.9F, rgb(255, 250, 230), 0.7F);
        canvas.ellipse({x, 0.75F}, 0.42F, 0.09F, rgb(255, 255, 250));
    }
    // The glass front with the daylight behind it.
    canvas.gradient(5.4F, 1.9F, 5.2F, 3.9F, rgb(176, 206, 226), rgb(206, 222, 206));
    canvas.polygon(
        {{5.4F, 4.9F}, {6.8F, 4.2F}, {8.2F, 4.8F}, {9.6F, 4.3F}, {10.6F, 4.7F}, {10.6F, 5.8F}, {5.4F, 5.8F}},
        rgb(120, 158, 116));
    for (int bar = 0; bar <= 4; ++bar) {
        canvas.rect(5.36F + static_cast<float>(bar) * 1.3F, 1.85F, 0.08F, 3.95F, rgb(86, 88, 92));
    }
    canvas.rect(5.36F, 1.82F, 5.28F, 0.1F, rgb(86, 88, 92));
    // Reception.
    canvas.roundedRect(0.6F, 4.6F, 3.6F, 1.6F, 0.12F, rgb(112, 78, 54));
    canvas.rect(0.5F, 4.5F, 3.8F, 0.16F, rgb(222, 214, 200));
    canvas.rect(0.8F, 4.9F, 3.2F, 0.05F, rgb(206, 164, 96), 0.8F);
    canvas.rect(2.5F, 4.05F, 0.7F, 0.42F, rgb(40, 44, 50));
    canvas.roundedRect(1.2F, 3.9F, 0.46F, 0.7F, 0.16F, rgb(50, 62, 96));
    canvas.ellipse({1.43F, 3.68F}, 0.17F, 0.2F, rgb(222, 180, 150));
    canvas.ellipse({1.43F, 3.58F}, 0.18F, 0.14F, rgb(52, 36, 30));
    // Lift frame and a plant.
    canvas.rect(12.1F, 2.2F, 2.7F, 3.7F, rgb(128, 130, 134));
    canvas.rect(12.3F, 2.4F, 2.3F, 3.5F, rgb(54, 56, 62));
    canvas.polygon({{10.95F, 6.1F}, {11.75F, 6.1F}, {11.65F, 6.8F}, {11.05F, 6.8F}}, rgb(178, 96, 62));
    for (unsigned leaf = 0; leaf < 14; ++leaf) {
        const float angle = -2.7F + static_cast<float>(leaf) * 0.17F;
        const float length = 0.8F + strewn(leaf, 9) * 0.5F;
        canvas.line({11.35F, 6.15F}, {11.35F + std::cos(angle) * length, 6.15F + std::sin(angle) * length}, 0.1F,
                    leaf % 2 == 0 ? rgb(56, 110, 62) : rgb(84, 142, 78));
    }
}

void LobbyScene::paintFrame(Canvas& canvas, float time) const {
    const float open = ease(time, 0.3F, 0.38F) - ease(time, 0.62F, 0.7F);
    const float half = 1.15F * (1 - open);
    if (open > 0) {
        canvas.gradient(12.3F, 2.4F, 2.3F, 3.5F, rgb(236, 222, 192), rgb(190, 172, 142));
        if (time < 0.5F) {
            paintWalker(canvas, {13.45F, 5.85F}, 2.5F, 0, -1, rgb(44, 58, 92), rgb(36, 38, 48));
        }
    }
    canvas.gradient(12.3F, 2.4F, half, 3.5F, rgb(176, 180, 186), rgb(146, 150, 156));
    canvas.gradient(14.6F - half, 2.4F, half, 3.5F, rgb(176, 180, 186), rgb(146, 150, 156));
    canvas.rect(13.1F, 1.78F, 0.7F, 0.34F, rgb(20, 22, 26));
    canvas.polygon({{13.45F, 1.84F}, {13.6F, 2.06F}, {13.3F, 2.06F}},
                   open > 0 ? rgb(80, 255, 120) : rgb(255, 120, 40));
    // Sliding doors follow whoever comes in.
    const float doors = ease(time, 0.05F, 0.12F) - ease(time, 0.3F, 0.38F);
    canvas.rect(6.74F - doors * 1.0F, 2.4F, 1.24F, 3.4F, rgb(226, 240, 246), 0.4F);
    canvas.rect(8.02F + doors * 1.0F, 2.4F, 1.24F, 3.4F, rgb(226, 240, 246), 0.4F);
    const float inward = ease(time, 0.1F, 0.5F);
    if (time > 0.08F && time < 0.52F) {
        paintWalker(canvas, {8 - inward * 5.2F, 5.8F + inward * 1.0F}, 2.0F + inward * 0.6F, travel(time, 16), -1,
                    rgb(168, 62, 54), rgb(52, 50, 60));
    }
    if (time >= 0.5F && time < 0.98F) {
        const float way = ease(time, 0.5F, 0.98F);
        paintWalker(canvas, {13.4F - way * 16.5F, 6.0F + way * 1.6F}, 2.5F + way * 0.5F, travel(time, 18), -1,
                    rgb(44, 58, 92), rgb(36, 38, 48));
    }
    paintWalker(canvas, {travel(time, 1, 0.7F) * 20 - 2, 7.5F}, 3.0F, travel(time, 15), 1, rgb(76, 100, 86),
                rgb(60, 56, 52));
    paintWalker(canvas, {18 - travel(time, 1, 0.25F) * 20, 8.5F}, 3.4F, travel(time, 14), -1, rgb(188, 164, 120),
                rgb(48, 54, 76));
}

} // namespace ipncsdk::media
