// The warnings of the run that made these results.
'use strict';

VelTarn.views.warnings = {
  render(space) {
    const {warnings} = VelTarn.results('FaultTrees');
    space.append(VelTarn.make('h1', {tabindex: '-1'}, 'Warnings'));
    if (warnings.length === 0) {
      space.append(VelTarn.make('p', {class: 'empty'}, 'The run gave no warnings.'));
      return;
    }
    space.append(VelTarn.make('ol', {class: 'warnings'},
        ...warnings.map((text) => VelTarn.make('li', {}, text))));
  },
};
