#include "media/loop/scenes/WarehouseScene.h"

#include "media/loop/scenes/Figures.h"

#include <array>

namespace ipncsdk::media {

namespace {

constexpr float belt = 6.9F;

void paintShelf(Canvas& canvas, float x, unsigned seed) {
    constexpr std::array cartons{rgb(176, 132, 84), rgb(158, 116, 72), rgb(190, 150, 100), rgb(120, 140, 150)};
    for (int level = 0; level < 4; ++level) {
        const float floorLine = 2.2F + static_cast<float>(level) * 0.98F;
        float left = x + 0.12F;
        for (unsigned box = 0; left < x + 2.7F; ++box) {
            const unsigned index = static_cast<unsigned>(level) * 16 + box;
            const float width = 0.35F + strewn(index, seed) * 0.4F;
            const float height = 0.35F + strewn(index, seed + 1) * 0.4F;
            const Colour colour = cartons[static_cast<std::size_t>(strewn(index, seed + 2) * 4)];
            canvas.rect(left, floorLine - height, width, height, colour);
            canvas.rect(left + width * 0.42F, floorLine - height, 0.07F, height, rgb(206, 180, 136), 0.7F);
            left += width + 0.06F;
        }
        canvas.rect(x, floorLine, 3.05F, 0.1F, rgb(206, 104, 36));
    }
    for (const float post : {0.0F, 2.97F}) {
        canvas.rect(x + post, 1.1F, 0.1F, 5, rgb(42, 70, 112));
    }
}

void paintLift(Canvas& canvas, float x, float fork, float wheel) {
    canvas.ellipse({x, 6.12F}, 1.2F, 0.09F, rgb(0, 0, 0), 0.3F);
    canvas.rect(x + 0.62F, 3.7F, 0.1F, 2.3F, rgb(52, 54, 60));
    canvas.rect(x + 0.7F, 5.85F - fork, 0.85F, 0.08F, rgb(60, 62, 66));
    canvas.rect(x + 0.78F, 5.3F - fork, 0.66F, 0.55F, rgb(186, 142, 92));
    canvas.rect(x + 1.05F, 5.3F - fork, 0.1F, 0.55F, rgb(216, 188, 142));
    canvas.roundedRect(x - 0.75F, 5.15F, 1.4F, 0.75F, 0.14F, rgb(232, 176, 36));
    canvas.line({x - 0.35F, 5.2F}, {x - 0.25F, 4.25F}, 0.07F, rgb(48, 50, 54));
    canvas.line({x + 0.5F, 5.2F}, {x + 0.42F, 4.25F}, 0.07F, rgb(48, 50, 54));
    canvas.rect(x - 0.32F, 4.2F, 0.8F, 0.08F, rgb(48, 50, 54));
    canvas.ellipse({x + 0.05F, 4.62F}, 0.14F, 0.16F, rgb(214, 170, 140));
    canvas.ellipse({x + 0.05F, 4.53F}, 0.16F, 0.1F, rgb(240, 210, 60));
    canvas.roundedRect(x - 0.15F, 4.76F, 0.38F, 0.45F, 0.1F, rgb(224, 110, 40));
    for (const float wheelX : {-0.45F, 0.4F}) {
        canvas.ellipse({x + wheelX, 5.92F}, 0.22F, 0.22F, rgb(30, 30, 32));
        canvas.arc({x + wheelX, 5.92F}, 0.03F, 0.13F, wheel * 6.283F, wheel * 6.283F + 2, rgb(150, 150, 150));
    }
}

} // namespace

void WarehouseScene::paintBackground(Canvas& canvas) const {
    canvas.gradient(0, 0, 16, 6.1F, rgb(92, 98, 106), rgb(150, 152, 150));
    canvas.gradient(0, 6.05F, 16, 3, rgb(134, 132, 126), rgb(92, 90, 88));
    for (int beam = 0; beam < 6; ++beam) {
        canvas.rect(static_cast<float>(beam) * 3.1F, 0, 0.14F, 6.1F, rgb(84, 88, 96), 0.5F);
        const float x = 0.9F + static_cast<float>(beam) * 2.9F;
        canvas.glow({x + 0.6F, 0.55F}, 1.5F, 0.8F, rgb(255, 252, 238), 0.6F);
        canvas.rect(x, 0.45F, 1.2F, 0.12F, rgb(255, 255, 248));
    }
    for (unsigned shelf = 0; shelf < 5; ++shelf) {
        paintShelf(canvas, 0.15F + static_cast<float>(shelf) * 3.2F, 40 + shelf * 5);
    }
    canvas.rect(0, 6.25F, 16, 0.08F, rgb(230, 196, 60), 0.8F);
    canvas.grain(0, 6.05F, 16, 3, 3, 5);
    canvas.rect(0, belt, 16, 0.34F, rgb(46, 48, 52));
    canvas.rect(0, belt + 0.34F, 16, 0.12F, rgb(120, 126, 132));
    for (int leg = 0; leg < 6; ++leg) {
        canvas.rect(0.7F + static_cast<float>(leg) * 2.9F, belt + 0.46F, 0.2F, 1.6F, rgb(98, 104, 110));
    }
}

void WarehouseScene::paintFrame(Canvas& canvas, float time) const {
    const float way = travel(time, 1, 0.2F);
    const float fork = 1.4F * (ease(way, 0.3F, 0.42F) - ease(way, 0.6F, 0.72F));
    const float run = ease(way, 0.02F, 0.3F) * 9 + ease(way, 0.72F, 0.98F) * 11;
    paintLift(canvas, run - 2.2F, fork, run / 1.4F);

    constexpr int spacing = 8;
    constexpr std::array cartons{rgb(190, 144, 92), rgb(164, 122, 76), rgb(206, 164, 112), rgb(178, 136, 96)};
    for (int roller = 0; roller < 40; ++roller) {
        const float x =
            travel(time, 24, static_cast<float>(roller) / 40) / 40 * 16 + static_cast<float>(roller) * 0.4F;
        canvas.rect(x - 0.1F, belt + 0.06F, 0.06F, 0.22F, rgb(86, 90, 96));
    }
    for (int box = 0; box < spacing; ++box) {
        const auto index = static_cast<unsigned>(box);
        const float x = travel(time, 2, static_cast<float>(box) / spacing) * 19 - 2;
        const float width = 0.8F + 0.5F * strewn(index, 3);
        const float height = 0.6F + 0.55F * strewn(index, 4);
        canvas.rect(x, belt - height, width, height, cartons[index % cartons.size()]);
        canvas.rect(x + width * 0.42F, belt - height, 0.14F, height, rgb(222, 196, 150));
        canvas.rect(x, belt - height, width, 0.07F, rgb(255, 236, 200), 0.35F);
        canvas.rect(x + width * 0.66F, belt - height * 0.55F, width * 0.24F, height * 0.3F, rgb(244, 244, 240));
        const bool scanned = x < 8.3F && x + width > 8.0F;
        if (scanned) {
            canvas.polygon({{8.1F, 5.2F}, {8.22F, 5.2F}, {x + width, belt - height}, {x, belt - height}},
                           rgb(255, 50, 40), 0.4F);
            canvas.glow({8.15F, 5.05F}, 0.6F, 0.6F, rgb(90, 255, 120), 0.8F);
        }
    }
    canvas.rect(7.35F, 4.85F, 0.16F, 3.1F, rgb(214, 218, 220));
    canvas.rect(8.8F, 4.85F, 0.16F, 3.1F, rgb(214, 218, 220));
    canvas.roundedRect(7.3F, 4.6F, 1.72F, 0.5F, 0.1F, rgb(56, 96, 150));
    canvas.ellipse({8.15F, 5.1F}, 0.1F, 0.08F, rgb(255, 70, 60));
}

} // namespace ipncsdk::media
