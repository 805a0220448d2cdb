// Results of a search for better designs.
'use strict';

/// The page of a search names its state file; these pages show analyses of one design only, and say
/// so instead of staying empty.
window.optimisationTransform = () => {
  document.getElementById('ContentSpace').replaceChildren(
      VelTarn.make('h1', {}, 'Optimisation results'),
      VelTarn.make('p', {class: 'empty'}, 'The designs that the search found stand in the XML file ' +
          'beside this page. This version of the pages does not draw them.'));
};
