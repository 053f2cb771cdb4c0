#include "media/loop/scenes/Figures.h"

#include <array>

namespace ipncsdk::media {

float strewn(unsigned index, unsigned salt) {
    unsigned value = index * 0x9e3779b9U ^ salt * 0x85ebca6bU;
    value = (value ^ (value >> 15)) * 0x2c1b3c6dU;
    value = (value ^ (value >> 12)) * 0x297a2d39U;
    return static_cast<float>((value ^ (value >> 15)) & 0xFFFFU) / 65536.0F;
}

void paintWalker(Canvas& canvas, Point feet, float height, float stride, float direction, Colour coat, Colour legs) {
    const float step = swing(stride, 1);
    const float bob = std::abs(step) * 0.02F * height;
    const Point hip{feet.x, feet.y - height * 0.48F + bob};
    const Point neck{feet.x + direction * height * 0.03F, feet.y - height * 0.84F + bob};
    const float thick = height * 0.085F;
    canvas.ellipse({feet.x, feet.y}, height * 0.22F, height * 0.035F, rgb(0, 0, 0), 0.28F);
    for (const float side : {-1.0F, 1.0F}) {
        const float swingAngle = side * step;
        const Point foot{hip.x + swingAngle * height * 0.2F,
                         feet.y - std::fmax(0.0F, -swingAngle * direction) * 0.03F * height};
        const Point knee{(hip.x + foot.x) / 2 + direction * height * 0.035F, (hip.y + foot.y) / 2};
        canvas.line(hip, knee, thick, legs);
        canvas.line(knee, foot, thick * 0.85F, legs);
        canvas.ellipse({foot.x + direction * height * 0.03F, foot.y}, height * 0.055F, height * 0.025F,
                       rgb(32, 30, 34));
    }
    const Point shoulder{neck.x, neck.y + height * 0.05F};
    const Point back{shoulder.x - step * direction * height * 0.13F, hip.y - height * 0.02F};
    canvas.line(shoulder, back, thick * 0.7F, coat);
    canvas.polygon({{neck.x - height * 0.085F, neck.y},
                    {neck.x + height * 0.085F, neck.y},
                    {hip.x + height * 0.1F, hip.y + height * 0.05F},
                    {hip.x - height * 0.1F, hip.y + height * 0.05F}},
                   coat);
    const Point front{shoulder.x + step * direction * height * 0.13F, hip.y - height * 0.02F};
    canvas.line(shoulder, front, thick * 0.75F, coat);
    canvas.ellipse(front, height * 0.03F, height * 0.03F, rgb(214, 168, 138));
    const Point head{neck.x + direction * height * 0.012F, neck.y - height * 0.075F};
    canvas.ellipse(head, height * 0.065F, height * 0.078F, rgb(219, 175, 146));
    canvas.ellipse({head.x - direction * height * 0.012F, head.y - height * 0.028F}, height * 0.066F, height * 0.056F,
                   rgb(48, 38, 32));
}

void paintCar(Canvas& canvas, float x, float ground, float length, float direction, Colour body, bool lights) {
    const float unit = length / 4;
    const auto place = [&](float along, float up) {
        return Point{x + direction * along * unit, ground - up * unit};
    };
    canvas.ellipse({x, ground}, length * 0.54F, unit * 0.14F, rgb(0, 0, 0), 0.45F);
    const std::array shape{place(-2, 0.25F),     place(-2.02F, 0.8F), place(-1.6F, 0.95F),
                           place(-1.05F, 1.42F), place(0.35F, 1.45F), place(1, 0.98F),
                           place(1.8F, 0.85F),   place(2.03F, 0.6F),  place(2, 0.25F)};
    canvas.polygon(shape, body);
    const Colour glass = lights ? rgb(46, 58, 74) : rgb(86, 108, 128);
    canvas.polygon({place(-1.3F, 0.98F), place(-0.95F, 1.33F), place(-0.35F, 1.35F), place(-0.35F, 0.98F)}, glass);
    canvas.polygon({place(-0.25F, 0.98F), place(-0.25F, 1.35F), place(0.3F, 1.35F), place(0.78F, 0.98F)}, glass);
    canvas.polygon({place(-2, 0.25F), place(-2, 0.36F), place(2, 0.36F), place(2, 0.25F)}, rgb(20, 20, 22), 0.6F);
    for (const float wheel : {-1.2F, 1.25F}) {
        canvas.ellipse(place(wheel, 0.32F), unit * 0.34F, unit * 0.34F, rgb(22, 22, 25));
        canvas.ellipse(place(wheel, 0.32F), unit * 0.17F, unit * 0.17F, rgb(138, 142, 148));
    }
    canvas.ellipse(place(1.93F, 0.64F), unit * 0.1F, unit * 0.09F, rgb(255, 246, 214));
    canvas.ellipse(place(-1.96F, 0.7F), unit * 0.07F, unit * 0.1F, rgb(214, 32, 28));
    if (lights) {
        canvas.polygon({place(1.98F, 0.68F), place(5.6F, 0.55F), place(5.4F, -0.12F), place(2, 0.55F)},
                       rgb(255, 240, 190), 0.16F);
        canvas.glow(place(4, 0.02F), unit * 1.9F, unit * 0.24F, rgb(255, 236, 180), 0.5F);
        canvas.glow(place(2, 0.64F), unit * 0.55F, unit * 0.5F, rgb(255, 250, 225), 0.85F);
        canvas.glow(place(-2.02F, 0.7F), unit * 0.45F, unit * 0.4F, rgb(255, 40, 30), 0.7F);
    }
}

} // namespace ipncsdk::media
