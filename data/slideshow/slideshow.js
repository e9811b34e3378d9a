// Steps through the pictures named by the selection list's option values; each option's text
// is the picture's caption. Works from a folder or a disc: no requests beyond the pictures.
(function () {
  'use strict';
  var list = document.getElementById('pictures');
  var picture = document.getElementById('picture');
  var caption = document.getElementById('caption');
  var counter = document.getElementById('counter');
  var play = document.getElementById('play');
  var delayMs = 4000;
  var timer = null;
  var preload = new Image();
  var captions = [];

  // Captions as written; a picture without one is listed by its file name.
  for (var i = 0; i < list.options.length; i++) {
    var option = list.options[i];
    captions.push(option.text.trim());
    if (!captions[i]) option.textContent = option.value;
  }

  // Names are relative to the page ("a.jpg", "sub/b.jpg"): each part escaped, so "#", "?"
  // or "%" stay part of the name.
  function address(index) {
    return list.options[index].value.split('/').map(encodeURIComponent).join('/');
  }

  function show(index) {
    var count = list.options.length;
    if (count === 0) {
      caption.textContent = 'This slide show has no pictures.';
      return;
    }
    index = ((index % count) + count) % count;
    list.selectedIndex = index;
    picture.src = address(index);
    picture.alt = captions[index] || list.options[index].value;
    caption.textContent = captions[index];
    counter.textContent = (index + 1) + ' / ' + count;
    if (count > 1) preload.src = address((index + 1) % count);
  }

  function step(by) { show(list.selectedIndex + by); }

  function setPlaying(on) {
    clearInterval(timer);
    timer = on ? setInterval(function () { step(1); }, delayMs) : null;
    play.setAttribute('aria-pressed', on ? 'true' : 'false');
    play.innerHTML = on ? '&#10074;&#10074; Pause' : '&#9654; Play';
  }

  list.addEventListener('change', function () { show(list.selectedIndex); });
  document.getElementById('previous').addEventListener('click', function () { step(-1); });
  document.getElementById('next').addEventListener('click', function () { step(1); });
  play.addEventListener('click', function () { setPlaying(timer === null); });
  document.addEventListener('keydown', function (event) {
    // The list and the buttons handle their own keys.
    var tag = event.target.tagName;
    if (tag === 'SELECT' || (tag === 'BUTTON' && event.key === ' ')) return;
    if (event.key === 'ArrowLeft') step(-1);
    else if (event.key === 'ArrowRight') step(1);
    else if (event.key === ' ') setPlaying(timer === null);
    else return;
    event.preventDefault();
  });

  show(Math.max(0, list.selectedIndex));
})();
