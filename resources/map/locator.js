// Orvana's map page. The program sends the view in the query (lon, lat, level counted from 0,
// maptype); after every move the page writes the view it shows into its own address as
// "$LOCATOR_TAGS=[lon,lat,level,maptype]", where the program reads it back. Pictures come from
// the tile address of the configuration only; the photos already placed come from this server.
(function () {
  'use strict';
  var query = new URLSearchParams(window.location.search);
  function number(name, fallback) {
    var value = parseFloat(query.get(name));
    return isFinite(value) ? value : fallback;
  }
  var mapType = Math.round(number('maptype', 0));
  var map = L.map('map', {
    zoomControl: query.get('mapzoomcontrol') !== '0',
    worldCopyJump: true
  }).setView([number('lat', 0), number('lon', 0)], Math.round(number('level', 11)));
  L.tileLayer(window.OrvanaMapConfig.tiles, {
    maxZoom: 19,
    attribution: '&copy; OpenStreetMap contributors'
  }).addTo(map);
  // The attribution names the sources without links: the page never leaves for another site.
  map.attributionControl.setPrefix('Leaflet');
  window.orvanaMap = map;

  function report() {
    var centre = map.wrapLatLng(map.getCenter());
    var tags = '$LOCATOR_TAGS=[' + centre.lng.toFixed(9) + ',' + centre.lat.toFixed(9) + ',' + map.getZoom() + ',' + mapType + ']';
    window.history.replaceState(null, '', window.location.pathname + window.location.search + '#' + tags);
  }

  // Only the locator page marks the album's photos that already have a place.
  var photos = L.layerGroup().addTo(map);
  function showPhotos() {
    if (window.location.pathname.indexOf('/map_locator/') < 0)
      return;
    fetch('/gmap/photos.json', {cache: 'no-store'}).then(function (reply) {
      return reply.ok ? reply.json() : [];
    }).then(function (list) {
      photos.clearLayers();
      list.forEach(function (photo) {
        L.circleMarker([photo.lat, photo.lon], {radius: 6, color: '#1f5fa8', weight: 2, fillOpacity: 0.6})
          .bindTooltip(String(photo.name)).addTo(photos);
      });
    }).catch(function () {});
  }

  window.orvanaRefreshPhotos = showPhotos;
  map.on('moveend', function () { report(); showPhotos(); });
  report();
  showPhotos();
})();
