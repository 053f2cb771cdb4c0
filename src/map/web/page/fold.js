'use strict';

// Values are seen where they cover no other marker and no other label: those of alarms first, then in the markers'
// order. Names are always seen, and all of a marker that somebody looks at.
class Fold {
    constructor(map, marks) {
        this.map = map;
        this.marks = marks;
        this.waiting = 0;
    }

    // Many changes are looked at once.
    soon() {
        this.waiting = this.waiting || setTimeout(() => {
            this.waiting = 0;
            this.now();
        }, 50);
    }

    // What takes room at each marker with its name alone and with all lines, px.
    measure(marks) {
        const sizes = (key) => marks.forEach((mark) => {
            mark.room[key] = [mark.text.offsetWidth, mark.text.offsetHeight];
        });
        marks.forEach((mark) => {
            mark.room = {};
            mark.element.classList.remove('folded');
            mark.element.classList.add('measured');
        });
        sizes('full');
        marks.forEach((mark) => mark.element.classList.add('folded'));
        sizes('name');
        marks.forEach((mark) => mark.element.classList.remove('measured'));
    }

    now() {
        this.measure(this.marks.filter((mark) => mark.room === null));
        const seen = this.marks.map((mark) => {
            const at = this.map.latLngToLayerPoint(mark.layer.getLatLng());
            return { mark, at, icon: Fold.around(at, [32, 32], -16), label: Fold.labelOf(mark, at, 'name') };
        });
        const rank = (one) => (one.mark.alarm ? 0 : 1);
        const order = [...seen].sort((one, other) => rank(one) - rank(other));
        order.forEach((one) => {
            const room = Fold.labelOf(one.mark, one.at, 'full');
            const isFree = seen.every((other) => other === one
                || !(Fold.meet(room, other.icon) || Fold.meet(room, other.label)));
            one.mark.element.classList.toggle('folded', !isFree);
            one.label = isFree ? room : one.label;
        });
    }

    static around(at, [width, height], top) {
        return { left: at.x - width / 2, right: at.x + width / 2, top: at.y + top, bottom: at.y + top + height };
    }

    // Nothing where the label is seen under the mouse alone.
    static labelOf(mark, at, key) {
        const isSeen = mark.element.classList.contains('always');
        return Fold.around(at, isSeen ? mark.room[key] : [0, 0], 20);
    }

    static meet(one, other) {
        return one.left < other.right && other.left < one.right && one.top < other.bottom && other.top < one.bottom;
    }
}
