// The head line of a search for better designs.
'use strict';

/// `stateFile` is the XML file of the search, beside the page.
window.optimisationSummaryTransform = (stateFile) => {
  document.getElementById('OverviewSpace').replaceChildren(
      VelTarn.make('p', {class: 'trail'}, 'State of the search: ',
          VelTarn.make('a', {href: encodeURI(stateFile)}, stateFile)));
};
