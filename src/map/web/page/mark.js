'use strict';

// A marker: its icon, the picture of its alarm, its label. Texts become text nodes and nothing else; "<br />" between
// lines is the only markup that is known.
class Mark {
    constructor(at, text, picture) {
        this.element = document.createElement('div');
        this.element.className = 'mark always';
        this.icon = this.addImage('icon');
        this.alarm = null;
        this.room = null; // of its label, until that changes
        this.text = document.createElement('div');
        this.text.className = 'text';
        this.element.append(this.text);
        this.setText(text);
        this.setPicture(picture);
        const icon = L.divIcon({ html: this.element, className: '', iconSize: [32, 32], iconAnchor: [16, 16] });
        this.layer = L.marker(at, { icon, keyboard: false, riseOnHover: true });
        this.element.tabIndex = 0;
        this.element.setAttribute('role', 'button');
    }

    addImage(name) {
        const image = document.createElement('img');
        image.className = name;
        image.alt = '';
        image.draggable = false;
        this.element.append(image);
        return image;
    }

    setText(text) {
        const lines = text.split('<br />');
        // Digits are as wide as each other, so most new values take the room of the old ones.
        const shape = lines.map((line) => line.length).join();
        if (shape !== this.shape) {
            this.shape = shape;
            this.room = null;
        }
        while (this.text.children.length > lines.length) {
            this.text.lastChild.remove();
        }
        while (this.text.children.length < lines.length) {
            this.text.append(document.createElement('div'));
        }
        lines.forEach((line, i) => {
            const row = this.text.children[i];
            if (row.textContent !== line) {
                row.textContent = line;
            }
        });
        this.element.setAttribute('aria-label', lines[0]);
    }

    setPicture(address) {
        this.icon.src = address;
    }

    // "always" or "mousein".
    setShowMode(mode) {
        this.element.classList.toggle('always', mode !== 'mousein');
    }

    // An empty address ends the alarm.
    setAlarm(address) {
        if (this.alarm) {
            this.alarm.remove();
            this.alarm = null;
        }
        if (address !== '') {
            this.alarm = this.addImage('alarm');
            this.alarm.src = address;
        }
        this.layer.setZIndexOffset(address === '' ? 0 : 10000);
    }

    // Marks it for a moment.
    flash() {
        this.element.classList.add('shown');
        this.element.focus({ preventScroll: true });
        clearTimeout(this.flashing);
        this.flashing = setTimeout(() => this.element.classList.remove('shown'), 3000);
    }
}
