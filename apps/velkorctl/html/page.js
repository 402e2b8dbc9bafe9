'use strict';
// Searching, filtering and sorting need this script; without it the page is the plain list.
document.addEventListener('DOMContentLoaded', () => {
  const lists = Array.from(document.querySelectorAll('.events'), list => ({
    section: list.closest('section'),
    parts: Array.from(list.children, part => ({element: part, size: part.children.length})),
    rows: Array.from(list.querySelectorAll('.event')),
  }));
  const rows = lists.flatMap(list => list.rows);
  const numbers = new Intl.NumberFormat('nl');
  const collator = new Intl.Collator('nl', {numeric: true});
  const title = row => row.querySelector('h3').textContent;
  const poster = row => row.querySelector('.poster').textContent;

  // What is searched in each row; made when it is first needed.
  let texts;
  const textOf = row => {
    texts ??= new Map(rows.map(each => [each, (title(each) + '\n' + poster(each)).toLowerCase()]));
    return texts.get(row);
  };

  const orders = {
    'Volgorde van de lijst': null,
    'Nieuwste eerst': (a, b) => b.dataset.stamp - a.dataset.stamp,
    'Oudste eerst': (a, b) => a.dataset.stamp - b.dataset.stamp,
    'Op titel': (a, b) => collator.compare(title(a), title(b)),
    'Op poster': (a, b) => collator.compare(poster(a), poster(b)),
    'Hoogste waardering eerst': (a, b) => b.dataset.rating - a.dataset.rating,
  };

  const control = (name, label, listener) => {
    const element = document.createElement(name);
    element.setAttribute('aria-label', label);
    element.addEventListener('input', listener);
    return element;
  };
  const choice = (label, words, listener) => {
    const select = control('select', label, listener);
    select.append(...words.map(word => new Option(word)));
    return select;
  };
  const found = of => Array.from(new Set(rows.map(of))).filter(word => word !== '').sort(collator.compare);

  const show = () => {
    const wanted = field.value.toLowerCase();
    const matches = row =>
        (wanted === '' || textOf(row).includes(wanted)) &&
        (category.selectedIndex === 0 || row.dataset.category === category.value ||
         row.dataset.category.startsWith(category.value + '/')) &&
        (state.selectedIndex === 0 || row.dataset.state === state.value);
    let count = 0;
    for (const list of lists) {
      let countOfList = 0;
      for (const part of list.parts) {
        let countOfPart = 0;
        for (const row of part.element.children) {
          row.hidden = !matches(row);
          countOfPart += row.hidden ? 0 : 1;
        }
        part.element.hidden = countOfPart === 0;
        part.element.style.containIntrinsicSize = `auto ${6 * countOfPart}rem`;
        countOfList += countOfPart;
      }
      if (list.section)
        list.section.hidden = countOfList === 0;
      count += countOfList;
    }
    const all = numbers.format(rows.length) + (rows.length === 1 ? ' posting' : ' postings');
    counter.textContent = count === rows.length ? all : numbers.format(count) + ' van ' + all;
    nothing.hidden = count > 0;
  };
  const sort = () => {
    const compare = orders[order.value];
    for (const list of lists) {
      const sorted = compare ? [...list.rows].sort(compare) : list.rows;
      let place = 0;
      for (const part of list.parts) {
        part.element.replaceChildren(...sorted.slice(place, place + part.size));
        place += part.size;
      }
    }
    show();
  };

  const field = control('input', 'Zoek in titel en poster', show);
  field.type = 'search';
  field.placeholder = field.getAttribute('aria-label');
  const categories = found(row => row.dataset.category.split('/')[0])
      .concat(found(row => row.dataset.category)).sort(collator.compare);
  const category = choice('Categorie', ['Alle categorieën', ...new Set(categories)], show);
  const state = choice('Status', ['Elke status', ...found(row => row.dataset.state)], show);
  const order = choice('Volgorde', Object.keys(orders), sort);
  const counter = document.querySelector('.count');
  const nothing = document.createElement('p');
  nothing.className = 'nothing';
  nothing.textContent = 'Geen postings gevonden.';
  nothing.hidden = rows.length > 0;

  const controls = document.createElement('div');
  controls.className = 'controls';
  controls.setAttribute('role', 'search');
  controls.append(field, category, state, order);
  document.querySelector('header').append(controls);
  document.querySelector('main').prepend(nothing);
});
