// The levels of one safety allocation, component by component.
'use strict';

(function () {
  const childOf = (element, name) =>
    Array.from(element.children).find((entry) => entry.nodeName === name);
  const textOf = (element, name) => {
    const child = element && childOf(element, name);
    return child ? child.textContent.trim() : '';
  };

  /// What a file gives instead of a level to an event that the allocation leaves out.
  const NoLevel = -1;

  /// The event carries its own name; the component that has it stands in the node around it.
  function readLevel(event) {
    const node = event.closest('EncodingNode');
    const level = Number(textOf(event, 'SafetyRequirement') || NoLevel);
    return {component: textOf(node && childOf(node, 'Component'), 'FullName'),
      event: textOf(event, 'Name'), id: textOf(event, 'ID'), level: level === NoLevel ? NaN : level};
  }

  /// {component, event, id, level} for every event below the element, in the order of the file; the level
  /// is NaN where the allocation gives none.
  VelTarn.asilLevels = (element) => Array.from(element.getElementsByTagName('BasicEvent'))
      .filter((event) => event.parentElement.nodeName === 'BasicEvents').map(readLevel);
}());
