// What leaves the page, and the short notices that say so: clipboard, CSV and SVG files.
'use strict';

(function () {
  let noticeTimer = 0;

  /// A line at the foot of the window for some seconds, read aloud by screen readers.
  VelTarn.notice = (text) => {
    let place = document.getElementById('Notice');
    if (!place) {
      place = VelTarn.make('div', {id: 'Notice', role: 'status', class: 'notice'});
      document.body.appendChild(place);
    }
    place.textContent = text;
    place.classList.add('shown');
    window.clearTimeout(noticeTimer);
    noticeTimer = window.setTimeout(() => place.classList.remove('shown'), 4000);
  };

  /// For browsers that give pages opened from disk no clipboard of their own.
  function copyBySelection(text) {
    const field = VelTarn.make('textarea', {'aria-hidden': 'true', 'class': 'off-screen'});
    field.value = text;
    document.body.appendChild(field);
    field.select();
    const done = document.execCommand('copy');
    field.remove();
    return done;
  }

  VelTarn.copy = async (text, what) => {
    let done = false;
    try {
      await navigator.clipboard.writeText(text);
      done = true;
    } catch (error) {
      done = copyBySelection(text);
    }
    VelTarn.notice(done ? what + ' copied.' : 'The browser does not allow copying from this page.');
  };

  VelTarn.saveFile = (name, type, text) => {
    const url = URL.createObjectURL(new Blob([text], {type}));
    const link = VelTarn.make('a', {href: url, download: name, class: 'off-screen'});
    document.body.appendChild(link);
    link.click();
    link.remove();
    // The browser has taken the content when the click returns, but not every one at once.
    window.setTimeout(() => URL.revokeObjectURL(url), 10000);
    VelTarn.notice('Saved as ' + name + '.');
  };

  const PlainNumber = /^[-+]?\d+(\.\d+)?(e[-+]?\d+)?$/i;

  function csvCell(value) {
    let text = String(value);
    // A spreadsheet would take a name that starts like this for a formula and run it.
    if (/^[=+\-@\t\r]/.test(text) && !PlainNumber.test(text)) text = '\'' + text;
    return /[",\r\n]/.test(text) ? '"' + text.replace(/"/g, '""') + '"' : text;
  }

  const tableText = (rows, separator, cell) =>
    rows.map((row) => row.map(cell).join(separator)).join('\r\n') + '\r\n';

  /// Rows of texts as a file for spreadsheets. The mark in front tells them that it is UTF-8.
  VelTarn.saveCsv = (name, rows) =>
    VelTarn.saveFile(name + '.csv', 'text/csv', '\ufeff' + tableText(rows, ',', csvCell));

  /// The same rows for pasting into a spreadsheet or a text.
  VelTarn.copyRows = (rows, what) =>
    VelTarn.copy(tableText(rows, '\t', (cell) => String(cell).replace(/[\t\r\n]+/g, ' ')), what);

  const PrintedRows = 2000;  // Paper is for reading; more than this is work for a file.

  /// Paper does not scroll: for the time of printing, what the view gives stands at the end of the
  /// space in the plain flow, and a line about what is too much. `rows` gives a function for each row
  /// that makes its element.
  VelTarn.printWith = (space, rows) => {
    const print = VelTarn.make('div', {class: 'printed-rows'});
    const before = () => {
      const all = rows();
      const left = all.length - PrintedRows;
      print.replaceChildren(...all.slice(0, PrintedRows).map((make) => make()));
      if (left > 0) print.append(VelTarn.make('p', {}, left + ' more lines are not printed.'));
    };
    const after = () => print.replaceChildren();
    window.addEventListener('beforeprint', before);
    window.addEventListener('afterprint', after);
    VelTarn.whenLeft(() => {
      window.removeEventListener('beforeprint', before);
      window.removeEventListener('afterprint', after);
    });
    space.append(print);
  };

  /// A name that every system takes for a file.
  VelTarn.fileName = (...parts) =>
    parts.filter((part) => part !== '').join('-').replace(/[^\w.-]+/g, '_').slice(0, 120);
}());
