'use strict';

// A marker that follows the mouse, or the arrow keys, until it is put down (a release or Enter) or put back (Escape, the
// right button). At most one.
class Carry {
    // `onPutDown` is called with the mark when it was put down elsewhere.
    constructor(map, onPutDown) {
        this.map = map;
        this.onPutDown = onPutDown;
        this.mark = null;
        this.from = null; // where it was
        const container = map.getContainer();
        document.addEventListener('mousemove', (event) => this.follow(event), true);
        document.addEventListener('mouseup', (event) => this.release(event), true);
        document.addEventListener('keydown', (event) => this.onKey(event), true);
        // What ends the carrying must not open a menu or count as a click as well.
        for (const kind of ['mousedown', 'click', 'dblclick', 'contextmenu']) {
            container.addEventListener(kind, (event) => this.swallow(event), true);
        }
        this.swallowsUntil = 0;
    }

    begin(mark) {
        this.end(true);
        this.mark = mark;
        this.from = mark.layer.getLatLng();
        this.map.dragging.disable();
        this.map.keyboard.disable();
        mark.element.classList.add('carried');
        mark.element.focus({ preventScroll: true });
        document.body.classList.add('carrying');
    }

    // Puts it back, or leaves it where it is.
    end(isBack) {
        const mark = this.mark;
        if (!mark) {
            return;
        }
        this.mark = null;
        this.swallowsUntil = performance.now() + 100;
        mark.element.classList.remove('carried');
        document.body.classList.remove('carrying');
        this.map.dragging.enable();
        this.map.keyboard.enable();
        if (isBack) {
            mark.layer.setLatLng(this.from);
        } else if (!mark.layer.getLatLng().equals(this.from)) {
            this.onPutDown(mark);
        }
    }

    // The mark is gone: nothing is put anywhere.
    forget(mark) {
        if (this.mark === mark) {
            this.end(true);
        }
    }

    follow(event) {
        if (this.mark) {
            this.mark.layer.setLatLng(this.map.mouseEventToLatLng(event));
        }
    }

    release(event) {
        if (this.mark) {
            const isPutDown = event.button === 0;
            if (isPutDown) {
                this.follow(event); // it may be the first that is heard of the mouse
            }
            this.end(!isPutDown);
        }
    }

    swallow(event) {
        if (this.mark || performance.now() < this.swallowsUntil) {
            event.preventDefault();
            event.stopPropagation();
        }
    }

    onKey(event) {
        const moves = { ArrowLeft: [-8, 0], ArrowRight: [8, 0], ArrowUp: [0, -8], ArrowDown: [0, 8] };
        if (!this.mark) {
            return;
        }
        if (moves[event.key]) {
            const at = this.map.latLngToContainerPoint(this.mark.layer.getLatLng()).add(moves[event.key]);
            this.mark.layer.setLatLng(this.map.containerPointToLatLng(at));
        } else if (event.key === 'Enter' || event.key === 'Escape') {
            this.end(event.key === 'Escape');
        } else {
            return;
        }
        event.preventDefault();
        event.stopPropagation();
    }
}
