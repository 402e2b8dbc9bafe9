'use strict';
// The search field is added here because it needs this script. It searches title and poster.
document.addEventListener('DOMContentLoaded', () => {
  const rows = Array.from(document.querySelectorAll('li.event'));
  const field = document.createElement('input');
  field.type = 'search';
  field.className = 'search';
  field.placeholder = 'Zoek in titel en poster';
  field.setAttribute('aria-label', field.placeholder);
  field.addEventListener('input', () => {
    const wanted = field.value.toLowerCase();
    for (const row of rows) {
      const found = row.querySelector('h3').textContent + '\n' +
                    row.querySelector('.poster').textContent;
      row.hidden = !found.toLowerCase().includes(wanted);
    }
  });
  document.querySelector('header').append(field);
});
