// The place of designs that a search has found.
'use strict';

VelTarn.views['tree-encoding'] = {
  render(space) {
    space.append(VelTarn.make('h1', {tabindex: '-1'}, 'Designs'), VelTarn.make('p', {class: 'empty'},
        'Designs are not part of this result: it analyses the model as it stands.'));
  },
};
