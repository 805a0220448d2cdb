// Pages of a search name the scripts of this folder only. This one brings those of the views along,
// in their order; scripts added while the page is read run before its load event.
'use strict';

(function () {
  const Views = ['menus', 'optimisation', 'optimisationSummary'];

  function addViews() {
    if (document.querySelector('script[src^="FTOutput/XSL/"]')) return;
    for (const name of Views) {
      const script = document.createElement('script');
      script.src = 'FTOutput/XSL/' + name + '.js';
      script.async = false;
      document.head.appendChild(script);
    }
  }

  document.addEventListener('DOMContentLoaded', addViews);
}());
