// The place of allocations that a search has found.
'use strict';

VelTarn.views['asil-optimisation'] = {
  render(space) {
    space.append(VelTarn.make('h1', {tabindex: '-1'}, 'Optimised safety allocations'),
        VelTarn.asilOptimisationSummary());
  },
};
