// Pages of a search name the scripts of this folder only. This one brings those of the views along,
// in their order; scripts added while the page is read run before its load event.
'use strict';

(function () {
  const Views = ['menus', 'designs', 'designFilter', 'plotBox', 'designPlot', 'parallelPlot',
    'treeEncoding', 'treeASILEncoding', 'ASILOptimisation', 'ASILOptimisationSummary', 'designView', 'designCompare',
    'optimisation', 'optimisationSummary'];

  function addViews() {
    if (document.querySelector('script[src^="FTOutput/XSL/"]')) return;
    for (const name of Views) {
      const script = document.createElement('script');
      script.src = 'FTOutput/XSL/' + name + '.js';
      script.async = false;
      document.head.appendChild(script);
    }
  }

  /// The page calls the views with the name of its file between apostrophes. A name that holds one
  /// breaks the call; then the page's own address tells the name.
  function startUncalled() {
    if (VelTarn.heading !== undefined) return;
    const stateFile = decodeURIComponent(window.location.pathname.replace(/^.*\//, ''))
        .replace(/\.html?$/i, '.xml');
    window.menuTransform(stateFile, 'Optimisation Results');
    window.optimisationTransform(stateFile, '', '');
    window.optimisationSummaryTransform(stateFile);
  }

  document.addEventListener('DOMContentLoaded', addViews);
  // Behind the page's own listener, which is registered later than this one.
  window.addEventListener('load', () => window.setTimeout(startUncalled, 0));
}());
