// Offline search over window.VF_SEARCH (search-index.js): every word typed must occur in a
// heading or its text; a function's own page comes first for its name.
(function () {
    "use strict";
    var input = document.getElementById("search");
    var list = document.getElementById("results");
    var entries = window.VF_SEARCH || [];
    if (!input || !list) return;

    function score(entry, words, query) {
        var title = entry.t.toLowerCase();
        var text = entry.x.toLowerCase();
        var total = 0;
        for (var i = 0; i < words.length; i++) {
            var w = words[i];
            if (title.indexOf(w) >= 0) total += 10;
            else if (text.indexOf(w) >= 0) total += 1;
            else return 0;
        }
        if (entry.f && entry.f.toLowerCase() === query) total += 100;
        if (title === query) total += 50;
        return total;
    }

    function snippet(entry, word) {
        var at = entry.x.toLowerCase().indexOf(word);
        if (at < 0) return entry.x.slice(0, 120);
        var start = Math.max(0, at - 40);
        return (start > 0 ? "…" : "") + entry.x.slice(start, at + 80) + "…";
    }

    function show() {
        var query = input.value.trim().toLowerCase();
        list.innerHTML = "";
        if (!query) { list.hidden = true; return; }
        var words = query.split(/\s+/);
        var hits = [];
        for (var i = 0; i < entries.length; i++) {
            var s = score(entries[i], words, query);
            if (s > 0) hits.push({ s: s, e: entries[i], i: i });
        }
        hits.sort(function (a, b) { return b.s - a.s || a.i - b.i; });
        hits = hits.slice(0, 25);
        if (!hits.length) {
            var none = document.createElement("li");
            none.className = "none";
            none.textContent = "Nothing found for “" + input.value.trim() + "”";
            list.appendChild(none);
        }
        hits.forEach(function (hit) {
            var li = document.createElement("li");
            var a = document.createElement("a");
            a.href = hit.e.u;
            a.textContent = hit.e.t;
            li.appendChild(a);
            if (hit.e.p !== hit.e.t) {
                var where = document.createElement("span");
                where.className = "where";
                where.textContent = " — " + hit.e.p;
                li.appendChild(where);
            }
            var p = document.createElement("p");
            p.textContent = snippet(hit.e, words[0]);
            li.appendChild(p);
            list.appendChild(li);
        });
        list.hidden = false;
    }

    input.addEventListener("input", show);
    input.addEventListener("keydown", function (event) {
        if (event.key === "Enter") {
            var first = list.querySelector("a");
            if (first) window.location.href = first.href;
        } else if (event.key === "Escape") {
            input.value = "";
            show();
        }
    });
    // index.html?q=word opens with that search.
    var q = /[?&]q=([^&]*)/.exec(window.location.search);
    if (q) { input.value = decodeURIComponent(q[1].replace(/\+/g, " ")); show(); }
})();
