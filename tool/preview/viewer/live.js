// What outlasts a new version of the page, and how it comes.

/** What outlasts a reload of the page, in this tab. */
const memory = {
  key: `ttr-preview ${location.pathname}`,

  recall() {
    try {
      return JSON.parse(sessionStorage.getItem(this.key)) || {};
    } catch {
      return {};
    }
  },

  keep(state) {
    try {
      sessionStorage.setItem(this.key, JSON.stringify(state));
    } catch {
      // A browser without storage for this page: it begins anew, that is all.
    }
  },
};

/** Reloads the page whenever the server has a new one, also after it was away. */
function followServer() {
  const note = byId('connection');
  const source = new EventSource('/events');
  source.addEventListener('reload', () => location.reload());
  source.addEventListener('open', () => {
    if (!note.hidden) location.reload();
  });
  source.addEventListener('error', () => {
    note.textContent = 'Connection to ttr lost, reconnecting …';
    note.hidden = false;
    if (source.readyState === EventSource.CLOSED) setTimeout(followServer, 2000);
  });
}
