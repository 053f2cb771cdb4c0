'use strict';

// The one menu that is open. Its entries are reached by mouse and keyboard, and it fits into a small cell by scrolling.
const menu = (() => {
    let open = null;
    let before = null; // what had the focus

    function close() {
        if (open) {
            open.remove();
            open = null;
            if (before && before.isConnected) {
                before.focus({ preventScroll: true });
            }
        }
    }

    function step(item, by) {
        const items = [...open.children];
        items[(items.indexOf(item) + by + items.length) % items.length].focus();
    }

    function onKey(event) {
        const moves = { ArrowDown: 1, ArrowUp: -1 };
        if (moves[event.key]) {
            step(event.target, moves[event.key]);
        } else if (event.key === 'Enter' || event.key === ' ') {
            event.target.click();
        } else if (event.key === 'Escape' || event.key === 'Tab') {
            close();
        }
        event.preventDefault();
        event.stopPropagation();
    }

    function addEntry(text, action) {
        const item = document.createElement('li');
        item.setAttribute('role', 'menuitem');
        item.tabIndex = -1;
        item.textContent = words.of(text);
        item.addEventListener('mouseenter', () => item.focus());
        item.addEventListener('click', (event) => {
            event.stopPropagation();
            close();
            action();
        });
        open.append(item);
    }

    document.addEventListener('mousedown', (event) => {
        if (open && !open.contains(event.target)) {
            close();
        }
    }, true);
    window.addEventListener('blur', close);
    window.addEventListener('resize', close);

    // `entries` are pairs of a text and what it does; x and y are px in the page.
    function show(entries, x, y) {
        close();
        before = document.activeElement;
        open = document.createElement('ul');
        open.className = 'menu';
        open.setAttribute('role', 'menu');
        open.addEventListener('keydown', onKey);
        open.addEventListener('contextmenu', (event) => event.preventDefault());
        entries.forEach(([text, action]) => addEntry(text, action));
        document.body.append(open);
        open.style.left = `${Math.max(0, Math.min(x, window.innerWidth - open.offsetWidth))}px`;
        open.style.top = `${Math.max(0, Math.min(y, window.innerHeight - open.offsetHeight))}px`;
        open.firstChild.focus();
    }

    return { show, close };
})();
