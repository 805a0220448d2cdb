// The levels of one safety allocation, component by component.
'use strict';

(function () {
  const make = VelTarn.make;
  const childOf = (element, name) =>
    Array.from(element.children).find((entry) => entry.nodeName === name);
  const textOf = (element, name) => {
    const child = childOf(element, name);
    return child ? child.textContent.trim() : '';
  };

  /// The event carries its own name; the component that has it stands in the node around it.
  function requirement(event) {
    const node = event.closest('EncodingNode');
    const component = node && childOf(node, 'Component');
    const owner = component ? textOf(component, 'FullName') : '';
    const name = textOf(event, 'Name');
    return make('li', {}, owner ? owner + '.' + name : name, ' ',
        make('span', {class: 'tag'}, 'Level ' + textOf(event, 'SafetyRequirement')));
  }

  /// Every event of an `Encoding` element with the level it is given; null when it has none.
  VelTarn.asilEncoding = (encoding) => {
    const levels = encoding ? Array.from(encoding.getElementsByTagName('SafetyRequirement')) : [];
    if (levels.length === 0) return null;
    return make('ul', {class: 'plain'}, ...levels.map((level) => requirement(level.parentElement)));
  };
}());
