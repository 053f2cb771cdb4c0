'use strict';

// What the page says, in the interface's language. Texts stand here and in the page as they are in Chinese; the program
// tells how they read in another language.
const words = (() => {
    let spoken = {};
    const lasting = [];

    return {
        of: (text) => spoken[text] || text,
        // Calls `show`, which sets texts that stay, now and whenever the language has changed.
        keep(show) {
            lasting.push(show);
            show();
        },
        set(language, texts) {
            spoken = texts;
            document.documentElement.lang = language;
            lasting.forEach((show) => show());
        },
    };
})();
