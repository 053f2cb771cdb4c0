#include "media/loop/scenes/CarParkScene.h"

#include "media/loop/scenes/Figures.h"

#include <array>

namespace ipncsdk::media {

namespace {

/// A car from above; `heading` in radians, 0 to the right.
void paintCarFromAbove(Canvas& canvas, Point centre, float heading, Colour body, bool lights) {
    const float c = std::cos(heading);
    const float s = std::sin(heading);
    const auto place = [&](float along, float aside) {
        return Point{centre.x + along * c - aside * s, centre.y + along * s + aside * c};
    };
    const auto shape = [&](float back, float front, float half, Colour colour, float alpha = 1.0F) {
        const float bevel = half * 0.4F;
        const std::array points{place(back + bevel, -half), place(front - bevel, -half), place(front, -half + bevel),
                                place(front, half - bevel), place(front - bevel, half),  place(back + bevel, half),
                                place(back, half - bevel),  place(back, -half + bevel)};
        canvas.polygon(points, colour, alpha);
    };
    if (lights) {
        canvas.polygon({place(0.95F, -0.3F), place(3.2F, -0.75F), place(3.2F, 0.75F), place(0.95F, 0.3F)},
                       rgb(255, 244, 206), 0.17F);
    }
    shape(-1.02F, 1.06F, 0.5F, rgb(0, 0, 0), 0.3F);
    shape(-0.98F, 1.0F, 0.43F, body);
    shape(-0.62F, 0.45F, 0.36F, rgb(40, 48, 58));
    shape(-0.45F, 0.18F, 0.33F, body);
    for (const float side : {-0.3F, 0.3F}) {
        canvas.ellipse(place(0.96F, side), 0.07F, 0.07F, rgb(255, 250, 228));
        canvas.ellipse(place(-0.96F, side), 0.06F, 0.06F, rgb(200, 30, 28));
    }
}

constexpr std::array bodies{rgb(168, 40, 40), rgb(210, 212, 214), rgb(40, 66, 118),
                            rgb(58, 60, 64),  rgb(188, 168, 128), rgb(52, 104, 88)};

} // namespace

void CarParkScene::paintBackground(Canvas& canvas) const {
    canvas.gradient(0, 0, 16, 9, rgb(84, 86, 90), rgb(106, 106, 108));
    canvas.grain(0, 0, 16, 9, 6, 29);
    canvas.rect(0, 0, 16, 0.55F, rgb(84, 116, 70));
    canvas.grain(0, 0, 16, 0.55F, 12, 31);
    for (unsigned bush = 0; bush < 13; ++bush) {
        const Point at{static_cast<float>(bush) * 1.3F + strewn(bush, 1) * 0.5F, 0.2F + strewn(bush, 2) * 0.2F};
        canvas.ellipse({at.x + 0.08F, at.y + 0.08F}, 0.42F, 0.34F, rgb(0, 0, 0), 0.25F);
        canvas.ellipse(at, 0.42F, 0.34F, rgb(54, 92, 52));
        canvas.ellipse({at.x - 0.1F, at.y - 0.1F}, 0.25F, 0.19F, rgb(82, 126, 70));
    }
    for (int slot = 0; slot <= 8; ++slot) {
        const float x = 0.5F + static_cast<float>(slot) * 1.35F;
        canvas.rect(x, 0.85F, 0.07F, 2.5F, rgb(224, 224, 218), 0.85F);
        canvas.rect(x, 6.5F, 0.07F, 2.5F, rgb(224, 224, 218), 0.85F);
    }
    for (unsigned slot = 0; slot < 8; ++slot) {
        const float x = 1.2F + static_cast<float>(slot) * 1.35F;
        if (slot != 4) {
            paintCarFromAbove(canvas, {x, 2.05F}, slot % 3 == 0 ? 1.5708F : -1.5708F, bodies[slot % bodies.size()],
                              false);
        }
        if (slot != 2 && slot != 6) {
            paintCarFromAbove(canvas, {x, 7.75F}, slot % 2 == 0 ? 1.5708F : -1.5708F,
                              bodies[(slot + 2) % bodies.size()], false);
        }
    }
    for (int arrow = 0; arrow < 3; ++arrow) {
        const float x = 2.6F + static_cast<float>(arrow) * 3.4F;
        canvas.polygon({{x, 4.28F}, {x + 0.5F, 4.05F}, {x + 0.5F, 4.51F}}, rgb(224, 224, 218), 0.7F);
        canvas.rect(x + 0.45F, 4.22F, 0.75F, 0.12F, rgb(224, 224, 218), 0.7F);
    }
    canvas.rect(12.6F, 0.55F, 0.3F, 2.9F, rgb(150, 148, 140));
    canvas.rect(12.6F, 6.4F, 0.3F, 2.6F, rgb(150, 148, 140));
    canvas.roundedRect(12.1F, 5.5F, 1.3F, 0.9F, 0.1F, rgb(196, 188, 170));
    canvas.roundedRect(12.25F, 5.62F, 1.0F, 0.65F, 0.08F, rgb(226, 220, 206));
    canvas.rect(13.5F, 0, 2.5F, 9, rgb(70, 71, 76));
    for (int dash = 0; dash < 6; ++dash) {
        canvas.rect(14.72F, 0.3F + static_cast<float>(dash) * 1.6F, 0.09F, 0.8F, rgb(224, 220, 206), 0.8F);
    }
}

void CarParkScene::paintFrame(Canvas& canvas, float time) const {
    // One car comes in from the road on the right, waits at the barrier, and takes the free place in the upper row;
    // later the same colour leaves it, so the loop closes.
    const float arrive = ease(time, 0.02F, 0.16F);
    const float enter = ease(time, 0.24F, 0.42F);
    const float park = ease(time, 0.42F, 0.5F);
    const float leave = ease(time, 0.6F, 0.68F);
    const float out = ease(time, 0.68F, 0.96F);
    const float slotX = 1.2F + 4 * 1.35F;
    Point place{17.5F - arrive * 3.6F - enter * (13.9F - slotX), 4.55F};
    float heading = 3.1416F;
    if (park > 0 && out == 0) {
        const float into = park - leave;
        place = {slotX, 4.55F - into * 2.5F};
        heading = 3.1416F + 1.5708F * ease(into, 0, 0.5F);
    } else if (out > 0) {
        place = {slotX - out * 10, 4.55F};
    }
    const bool moving = (time < 0.5F || time > 0.58F);
    paintCarFromAbove(canvas, place, heading, rgb(212, 128, 40), moving);
    const float open = ease(time, 0.18F, 0.24F) - ease(time, 0.4F, 0.46F);
    const float angle = 1.5708F + 1.4F * open;
    const Point pivot{12.75F, 5.45F};
    const Point tip{pivot.x + 2.0F * std::cos(angle), pivot.y - 2.0F * std::sin(angle)};
    canvas.line({pivot.x + 0.1F, pivot.y + 0.1F}, {tip.x + 0.1F, tip.y + 0.1F}, 0.1F, rgb(0, 0, 0), 0.3F);
    for (int stripe = 0; stripe < 8; ++stripe) {
        const auto along = [&](int index) {
            const float part = static_cast<float>(index) / 8;
            return Point{pivot.x + (tip.x - pivot.x) * part, pivot.y + (tip.y - pivot.y) * part};
        };
        canvas.line(along(stripe), along(stripe + 1), 0.12F, stripe % 2 == 0 ? rgb(214, 44, 40) : rgb(240, 240, 236));
    }
    canvas.ellipse(pivot, 0.16F, 0.16F, rgb(60, 60, 64));
    canvas.glow({12.75F, 6.0F}, 0.55F, 0.55F, open > 0.5F ? rgb(80, 255, 110) : rgb(255, 60, 50), 0.85F);
    // The traffic on the road keeps clear of the car that waits at the barrier.
    for (const float offset : {0.62F, 0.8F, 0.98F}) {
        paintCarFromAbove(canvas, {15.4F, 11 - travel(time, 2, offset) * 13}, -1.5708F,
                          bodies[static_cast<std::size_t>(offset * 6)], true);
    }
    paintCarFromAbove(canvas, {14.1F, travel(time, 1, 0.7F) * 13 - 2}, 1.5708F, bodies[1], true);
}

} // namespace ipncsdk::media
